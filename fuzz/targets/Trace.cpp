// Traces: what is read is exactly what the grammar allows, and reads back as it was.
#include "host/trace/Trace.h"

#include "fuzz/support/FuzzTarget.h"
#include "qt/Saturated.h"

#include <QRegularExpression>

namespace {

using namespace hx;
using namespace hx::fuzz;

const char header[] = "# hxtrace 1\n";

// docs/formats/trace-format.md, line by line.
bool isAllowed(const QString& line)
{
    static const QRegularExpression withBytes(
        QStringLiteral("^ *[0-9]{1,9}\\.[0-9]{6} +(?:sent|received|ignored|dropped|realtime|unsent)"
                       "(?: +[0-9A-F]{2})+(?: += +[^\\x00-\\x20\\x7F]+)?"
                       "(?: +: (?:[^\\\\]|\\\\\\\\|\\\\x[0-9A-Fa-f]{2})*)?\\z"),
        QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression withoutBytes(
        QStringLiteral(
            "^ *[0-9]{1,9}\\.[0-9]{6} +(?:timeout|lost|unsent|interrupted|accepted|decided|log)"
            "(?: +: (?:[^\\\\]|\\\\\\\\|\\\\x[0-9A-Fa-f]{2})*)?\\z"),
        QRegularExpression::DotMatchesEverythingOption);
    return line.startsWith(QLatin1Char('#')) || withBytes.match(line).hasMatch() ||
           withoutBytes.match(line).hasMatch();
}

bool isSame(const TraceEvent& a, const TraceEvent& b)
{
    return a.event.kind == b.event.kind && a.event.time == b.event.time &&
           a.event.bytes == b.event.bytes && a.event.text == b.event.text && a.name == b.name;
}

void readBack(const TraceFile& trace)
{
    QByteArray content(header);
    for (const TraceEvent& event : trace.events)
        content += traceLine(event).toUtf8() + '\n';
    const TraceFile again = parseTrace(content);
    requireSame(again.error, QString(), "a written trace is good");
    requireSame(again.events.size(), trace.events.size(), "a written trace has every event");
    for (size_t i = 0; i < again.events.size(); ++i)
        require(isSame(again.events[i], trace.events[i]), "an event reads back as it was");
}

// The lines up to the first wrong one, or all of them, as the reader should have taken them.
void checkLines(const QByteArray& content, const TraceFile& trace)
{
    QList<QByteArray> lines = content.split('\n');
    const int count = trace.ok() ? saturated(lines.size()) : trace.errorLine - 1;
    require(count <= lines.size(), "an error stands in a line");
    for (int i = 1; i < count; ++i) {
        const QByteArray line = lines.at(i).endsWith('\r') ? lines.at(i).chopped(1) : lines.at(i);
        const bool isLast = i == lines.size() - 1 && lines.at(i).isEmpty();
        require(isLast || isAllowed(QString::fromUtf8(line.constData(), line.size())),
                "only what the grammar allows");
    }
    Microseconds last = 0;
    for (const TraceEvent& event : trace.events) {
        require(event.event.time >= last, "time never goes backwards");
        last = event.event.time;
    }
}

void run(FuzzInput& input)
{
    const bool hasHeader = !input.flag();
    const QByteArray content = (hasHeader ? QByteArray(header) : QByteArray()) + input.rest();
    const TraceFile trace = parseTrace(content);
    requireSame(trace.ok(), trace.errorLine == 0, "an error has a line");
    requireSame(trace.ok(), trace.errorColumn == 0, "an error has a column");
    if (trace.ok() || trace.errorLine > 1)
        checkLines(content, trace);
    readBack(trace);
}

const Target target("trace", run);

} // namespace
