// Every way this program can end: one table that the help, the man page and the tests share.
#pragma once

#include <QString>

#include <vector>

namespace hx::host {

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
    Interrupted = 130, // what a shell reports for a program that Ctrl-C has ended
};

struct ExitCodeRow {
    ExitCode code;
    const char* name;    // the word in "exitName" of the JSON document
    const char* meaning; // one clause, lower case, no full stop
};

// All rows, ascending by number.
const std::vector<ExitCodeRow>& exitCodeTable();

// The word for a code; every enumerator has one.
QString exitName(ExitCode code);

// The table as lines "number  name  meaning" for people to read.
QString exitCodeHelp();

} // namespace hx::host
