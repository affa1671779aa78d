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
        QStringLiteral("^ *[0-9]{1,9}\\.[0-9]{6} "
                       "+(?:timeout|lost|back|unsent|interrupted|accepted|decided|log)"
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

void readBack(const TraceEvents& events)
{
    QByteArray content(header);
    for (const TraceEvent& event : events)
        content += traceLine(event).toUtf8() + '\n';
    const Result<TraceEvents> again = parseTrace(content);
    require(bool(again), "a written trace is good");
    requireSame(again->size(), events.size(), "a written trace has every event");
    for (size_t i = 0; i < events.size(); ++i)
        require(isSame(again->at(i), events[i]), "an event reads back as it was");
}

// The lines before the first wrong one, or all of them, as the reader should have taken them.
void checkLines(const QByteArray& content, const Result<TraceEvents>& trace)
{
    QList<QByteArray> lines = content.split('\n');
    const int count = trace ? saturated(lines.size()) : trace.problem().place.line - 1;
    require(count <= lines.size(), "an error is in a line");
    for (int i = 1; i < count; ++i) {
        const QByteArray line = lines.at(i).endsWith('\r') ? lines.at(i).chopped(1) : lines.at(i);
        const bool isLast = i == lines.size() - 1 && lines.at(i).isEmpty();
        require(isLast || isAllowed(QString::fromUtf8(line.constData(), line.size())),
                "only what the grammar allows");
    }
}

void checkTimes(const TraceEvents& events)
{
    Microseconds last = 0;
    for (const TraceEvent& event : events) {
        require(event.event.time >= last, "time never goes backwards");
        last = event.event.time;
    }
}

// Of a bad trace, what comes before the line that is wrong is a good one.
void checkProblem(const QByteArray& content, const Place& place)
{
    require(place.line > 0 && place.column > 0, "an error has a line and a column");
    if (place.line == 1)
        return;
    const QList<QByteArray> before = content.split('\n').mid(0, place.line - 1);
    require(bool(parseTrace(before.join('\n'))), "the lines before the wrong one are good");
}

void run(FuzzInput& input)
{
    const bool hasHeader = !input.flag();
    const QByteArray content = (hasHeader ? QByteArray(header) : QByteArray()) + input.rest();
    const Result<TraceEvents> trace = parseTrace(content);
    if (!trace)
        checkProblem(content, trace.problem().place);
    if (trace || trace.problem().place.line > 1)
        checkLines(content, trace);
    if (!trace)
        return;
    checkTimes(*trace);
    readBack(*trace);
}

const Target target("trace", run);

} // namespace
