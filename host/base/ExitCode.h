/** @file
 * Every way a command can end. Scripts rely on the numbers.
 */
#pragma once

namespace hx {

enum class ExitCode : int {
    Success = 0,
    Internal = 1,
    Usage = 2,
    NoPlugin = 3,
    NoPort = 4,
    NoAnswer = 5,
    ImageRefused = 6,
    UpdateFailed = 7,
    VerificationFailed = 8,
    WrongProduct = 9,
    FileError = 10,
    ReplayDiverged = 11,
    NotConfirmed = 12,
    ContractBroken = 13,
    NotAllUpdated = 14,
    Interrupted = 130, /**< what a shell reports for a program that Ctrl-C has ended */
};

} // namespace hx
