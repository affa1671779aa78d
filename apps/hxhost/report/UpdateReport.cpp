#include "apps/hxhost/report/UpdateReport.h"

#include "apps/hxhost/report/Readings.h"

#include "host/base/HexText.h"

namespace hx {

namespace {

double wholeMilliseconds(Microseconds duration)
{
    const qint64 milliseconds = duration / microsecondsPerMillisecond;
    return double(milliseconds);
}

QJsonArray stepRows(const std::vector<UpdateStep>& steps)
{
    QJsonArray rows;
    for (const UpdateStep& step : steps)
        rows << QJsonObject{{"step", step.name},
                            {"good", step.good},
                            {"ms", wholeMilliseconds(step.duration)},
                            {"found", step.text}};
    return rows;
}

void addReadings(Report& report, const UpdateResult& result)
{
    addReading(report, QStringLiteral("before.identity"), result.identityBefore);
    addReading(report, QStringLiteral("before.version"), result.versionBefore);
    addReading(report, QStringLiteral("after.identity"), result.identityAfter);
    addReading(report, QStringLiteral("after.version"), result.versionAfter);
    addReading(report, QStringLiteral("checksum.stored"), result.stored);
    addReading(report, QStringLiteral("checksum.calculated"), result.calculated);
    if (!result.imageChecksum.isEmpty())
        report.add(QStringLiteral("checksum.image"), hexText(result.imageChecksum));
}

void addTransfer(Report& report, const UpdateResult& result)
{
    if (result.progress.totalMessages == 0)
        return;
    report.add(QStringLiteral("messages.total"), result.progress.totalMessages);
    report.add(QStringLiteral("messages.acknowledged"), result.progress.message);
    report.add(QStringLiteral("messages.retries"), result.progress.retries);
    if (result.failedMessage > 0) {
        report.add(QStringLiteral("messages.failed"), result.failedMessage);
        report.add(QStringLiteral("messages.lastReply"), hexText(result.lastReply.bytes));
    }
    report.add(QStringLiteral("bytes.total"), double(result.progress.totalBytes));
    report.add(QStringLiteral("bytes.acknowledged"), double(result.progress.bytes));
}

QString expectedInstead(UpdateOutcome outcome)
{
    switch (outcome) {
    case UpdateOutcome::ImageRefused:
        return QStringLiteral("a whole image for a product that the plugin serves");
    case UpdateOutcome::NoAnswer:
        return QStringLiteral("an answer within the plugin's timeout");
    case UpdateOutcome::WrongProduct:
        return QStringLiteral("the product that the image is for");
    case UpdateOutcome::Failed:
        return QStringLiteral("every message acknowledged as good");
    case UpdateOutcome::VerificationFailed:
        return QStringLiteral("stored and calculated checksum equal, and an answer to the "
                              "identity request");
    case UpdateOutcome::Interrupted:
        return QStringLiteral("to run to its end");
    case UpdateOutcome::PortLost:
        return QStringLiteral("a port that stays connected");
    case UpdateOutcome::Succeeded:
        break;
    }
    return QString();
}

} // namespace

ExitCode exitCodeOf(const UpdateResult& result)
{
    switch (result.outcome) {
    case UpdateOutcome::Succeeded:
        return ExitCode::Success;
    case UpdateOutcome::ImageRefused:
        return ExitCode::ImageRefused;
    case UpdateOutcome::NoAnswer:
        return result.touched ? ExitCode::UpdateFailed : ExitCode::NoAnswer;
    case UpdateOutcome::WrongProduct:
        return ExitCode::WrongProduct;
    case UpdateOutcome::Failed:
        return ExitCode::UpdateFailed;
    case UpdateOutcome::VerificationFailed:
        return ExitCode::VerificationFailed;
    case UpdateOutcome::Interrupted:
        return ExitCode::Interrupted;
    case UpdateOutcome::PortLost:
        return ExitCode::NoPort;
    }
    return ExitCode::Internal;
}

void reportUpdate(CommandContext& context, const UpdateResult& result)
{
    Report& report = context.report;
    report.add(QStringLiteral("outcome"), updateOutcomeText(result.outcome));
    addTransfer(report, result);
    report.add(QStringLiteral("durationMs"), wholeMilliseconds(result.duration));
    addReadings(report, result);
    report.add(QStringLiteral("product.state"), result.productState);
    report.add(QStringLiteral("product.touched"), result.touched);
    report.addTable(QStringLiteral("steps"),
                    {QStringLiteral("step"), QStringLiteral("good"), QStringLiteral("ms"),
                     QStringLiteral("found")},
                    stepRows(result.steps));
    if (result.succeeded())
        return;
    const QString what =
        QStringLiteral("%1: %2").arg(updateOutcomeText(result.outcome), result.reason);
    context.fail(exitCodeOf(result), what, expectedInstead(result.outcome),
                 (result.productState + QLatin1Char(' ') + result.advice).trimmed());
}

void reportPluginAnswers(CommandContext& context, const Session& session,
                         const UpdateResult& result)
{
    const bool answers = result.outcome == UpdateOutcome::Succeeded ||
                         result.outcome == UpdateOutcome::VerificationFailed;
    if (answers)
        addPluginAnswers(context.report, askPlugin(session.device()));
}

} // namespace hx
