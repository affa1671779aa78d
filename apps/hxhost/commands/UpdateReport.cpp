#include "apps/hxhost/commands/UpdateReport.h"

#include "apps/hxhost/commands/Readings.h"
#include "apps/hxhost/commands/Sentences.h"

#include "host/base/HexText.h"

namespace hx::host {

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
    addReading(report, QStringLiteral("before.esn"), result.esnBefore);
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

QString versionsText(const UpdateResult& result, bool isUpdate)
{
    QString now = QStringLiteral("Version %1").arg(result.versionAfter.version);
    if (!isUpdate)
        return now;
    return QStringLiteral("%1; before the update: %2")
        .arg(now, result.versionBefore.good() ? result.versionBefore.version
                                              : QStringLiteral("no valid code"));
}

QString verifiedText(bool isImages)
{
    return isImages ? QStringLiteral("Verified: the instrument answers, and its code is that of "
                                     "the image")
                    : QStringLiteral("Verified: the instrument answers, and its code is intact");
}

} // namespace

void addSuccess(Report& report, const Session& session, const QStringList& lines)
{
    const QString end = session.isMadeUp()
                            ? QStringLiteral(". Simulated: no instrument was changed.")
                            : QStringLiteral(".");
    for (const QString& line : lines)
        report.say(line + end);
}

void reportUpdate(CommandContext& context, const Session& session, const UpdateImage* image,
                  const UpdateResult& result)
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
    if (!result.succeeded())
        return report.fail(problemOf(result, image, session.port().name()));
    addSuccess(report, session,
               {productText(session.device().productName(), result.esnBefore),
                versionsText(result, result.touched), verifiedText(image != nullptr)});
}

void reportPluginAnswers(CommandContext& context, const Session& session,
                         const UpdateResult& result)
{
    const bool answers = result.outcome == UpdateOutcome::Succeeded ||
                         result.outcome == UpdateOutcome::VerificationFailed;
    if (answers)
        addPluginAnswers(context.report, askPlugin(session.device()), result.stored,
                         result.calculated);
}

} // namespace hx::host
