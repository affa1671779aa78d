// hxhost trace: a recorded session as a table and in numbers, or as a picture.
#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/commands/Commands.h"
#include "apps/hxhost/report/StandardStreams.h"
#include "host/trace/TraceSummary.h"
#include "host/trace/TraceSvg.h"

#include "host/base/FileName.h"
#include "host/base/HexText.h"
#include "host/base/PrintableText.h"

namespace hx::host {

namespace {

QString msText(Microseconds time)
{
    return QString::number(double(time) / double(microsecondsPerMillisecond), 'f', 3);
}

QJsonObject eventRow(const TraceEvent& event)
{
    return {{"line", event.line},
            {"ms", double(event.event.time) / double(microsecondsPerMillisecond)},
            {"event", busEventWord(event.event.kind)},
            {"bytes", hexText(event.event.bytes)},
            {"name", event.name},
            {"text", event.event.text}};
}

// The same for people, who look at one line an event.
QJsonObject shownRow(const TraceEvent& event)
{
    QJsonObject row = eventRow(event);
    row["ms"] = msText(event.event.time);
    row["what"] = (hexTextShort(event.event.bytes) + QLatin1Char(' ') + event.event.text).trimmed();
    return row;
}

QJsonArray shownRows(const TraceEvents& events)
{
    QJsonArray rows;
    for (const TraceEvent& event : events)
        rows << shownRow(event);
    return rows;
}

QJsonArray eventRows(const TraceEvents& events)
{
    QJsonArray rows;
    for (const TraceEvent& event : events)
        rows << eventRow(event);
    return rows;
}

void addMs(Report& report, const char* name, Microseconds time)
{
    const double ms = double(time) / double(microsecondsPerMillisecond);
    report.add(QString::fromLatin1(name), ms, msText(time));
}

void addSummary(Report& report, const TraceSummary& summary)
{
    report.add(QStringLiteral("summary.sent"), summary.sent);
    report.add(QStringLiteral("summary.retries"), summary.retries);
    report.add(QStringLiteral("summary.received"), summary.received);
    report.add(QStringLiteral("summary.ignored"), summary.ignored);
    report.add(QStringLiteral("summary.timeouts"), summary.timeouts);
    report.add(QStringLiteral("summary.realTime"), summary.realTime);
    report.add(QStringLiteral("summary.sentBytes"), double(summary.sentBytes));
    report.add(QStringLiteral("summary.receivedBytes"), double(summary.receivedBytes));
    report.add(QStringLiteral("summary.droppedBytes"), double(summary.droppedBytes));
    addMs(report, "summary.elapsedMs", summary.elapsed);
    addMs(report, "summary.wireMs", summary.wire);
    addMs(report, "summary.waitingMs", summary.waiting);
    addMs(report, "summary.slowestReplyMs", summary.slowestReply);
    report.add(QStringLiteral("summary.slowestReplyLine"), summary.slowestLine);
    report.add(QStringLiteral("summary.wireUse"), summary.wireUse(),
               QString::number(summary.wireUse(), 'f', 4) +
                   QStringLiteral(" (elapsed without waiting, in wire times)"));
}

struct TraceOptions {
    std::string file;
    std::string svg; // empty: no picture is made
};

void addEvents(Report& report, const TraceEvents& events, bool areDrawn)
{
    if (areDrawn)
        return report.addHidden(QStringLiteral("events"), eventRows(events));
    report.addTable(QStringLiteral("events"),
                    {QStringLiteral("ms"), QStringLiteral("event"), QStringLiteral("name"),
                     QStringLiteral("what")},
                    eventRows(events), shownRows(events));
}

void drawTrace(CommandContext& context, const TraceOptions& options, const TraceEvents& events)
{
    const QString path = fileNameText(options.svg);
    const QString title =
        printable(fileNameText(std::filesystem::path(options.file).filename().string()));
    const QByteArray picture = traceSvg(title, events);
    context.isOutputTaken = isStandardStream(path);
    const Result<> written = writeOutput(path, picture);
    if (!written)
        return context.fail(ExitCode::FileError,
                            QStringLiteral("the picture \"%1\" cannot be written: %2")
                                .arg(path, written.problem().what),
                            QStringLiteral("a file name in a folder that may be written to"),
                            QStringLiteral("give another name with --svg"));
    context.report.add(QStringLiteral("picture"), path);
}

void showTrace(CommandContext& context, const TraceOptions& options)
{
    const QString name = fileNameText(options.file);
    const Result<TraceEvents> events = readTrace(name);
    if (!events)
        return context.report.fail(events.problem());
    addEvents(context.report, *events, !options.svg.empty());
    addSummary(context.report, summarize(*events));
    if (!options.svg.empty())
        drawTrace(context, options, *events);
}

} // namespace

void addTraceCommand(CommandLine& line)
{
    auto options = std::make_shared<TraceOptions>();
    const Command command =
        line.add("trace", "Show a recorded session as a table and in numbers, or draw it");
    command.addOption("FILE", options->file, "What --trace has written").required();
    command
        .addOption("--svg", options->svg,
                   "Draw a picture instead of the table: the exchange as a sequence, and the "
                   "throughput over the time")
        .valueName("FILE");
    line.setRun(command, [options](CommandContext& context) { showTrace(context, *options); });
}

} // namespace hx::host
