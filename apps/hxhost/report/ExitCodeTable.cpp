#include "apps/hxhost/report/ExitCodeTable.h"

namespace hx::host {

const std::vector<ExitCodeRow>& exitCodeTable()
{
    static const std::vector<ExitCodeRow> rows = {
        {ExitCode::Success, "success", "everything that was asked for was done and checked"},
        {ExitCode::Internal, "internal", "a fault of this program, please report it"},
        {ExitCode::Usage, "usage", "an unknown option, command or value"},
        {ExitCode::NoPlugin, "no-plugin", "no usable plugin at the place it was looked for"},
        {ExitCode::NoPort, "no-port",
         "no such port, several that fit, in use, or it failed or went away"},
        {ExitCode::NoAnswer, "no-answer", "the product did not answer in time, or not usably"},
        {ExitCode::ImageRefused, "image-refused",
         "the image is damaged, not an update image, or not signed with a trusted key"},
        {ExitCode::UpdateFailed, "update-failed", "the update stopped before its end"},
        {ExitCode::VerificationFailed, "verification-failed",
         "the code in the product was not shown to be intact"},
        {ExitCode::WrongProduct, "wrong-product",
         "the product or the image is not one that the plugin serves"},
        {ExitCode::FileError, "file-error", "a file could not be read or written"},
        {ExitCode::ReplayDiverged, "replay-diverged",
         "what was sent is not what the replayed trace recorded"},
        {ExitCode::NotConfirmed, "not-confirmed", "the question was not answered with yes"},
        {ExitCode::ContractBroken, "contract-broken",
         "the plugin breaks a rule of the contract, or crashes in the check"},
        {ExitCode::NotAllUpdated, "not-all-updated",
         "at least one product of a batch was not updated"},
        {ExitCode::Interrupted, "interrupted",
         "stopped by Ctrl-C, SIGTERM or the closing of the terminal"},
    };
    return rows;
}

QString exitName(ExitCode code)
{
    for (const ExitCodeRow& row : exitCodeTable()) {
        if (row.code == code)
            return QString::fromLatin1(row.name);
    }
    return QString();
}

QString exitCodeHelp()
{
    QString text = QStringLiteral("Exit codes:\n");
    for (const ExitCodeRow& row : exitCodeTable())
        text += QString::asprintf("  %3d  %-20s %s\n", int(row.code), row.name, row.meaning);
    return text;
}

} // namespace hx::host
