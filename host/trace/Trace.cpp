#include "host/trace/Trace.h"

#include "host/base/HexText.h"
#include "host/base/PrintableText.h"

#include <array>
#include <utility>

namespace hx {

namespace {

constexpr int secondsWidth = 6;
constexpr int wordWidth = 11;

constexpr std::array<std::pair<BusEventKind, const char*>, 13> words = {{
    {BusEventKind::Sent, "sent"},
    {BusEventKind::Received, "received"},
    {BusEventKind::Ignored, "ignored"},
    {BusEventKind::Dropped, "dropped"},
    {BusEventKind::RealTime, "realtime"},
    {BusEventKind::TimedOut, "timeout"},
    {BusEventKind::PortLost, "lost"},
    {BusEventKind::PortBack, "back"},
    {BusEventKind::SendFailed, "unsent"},
    {BusEventKind::Interrupted, "interrupted"},
    {BusEventKind::Accepted, "accepted"},
    {BusEventKind::Decided, "decided"},
    {BusEventKind::Log, "log"},
}};

QString timeColumn(Microseconds time)
{
    return QStringLiteral("%1.%2")
        .arg(time / microsecondsPerSecond, secondsWidth)
        .arg(time % microsecondsPerSecond, 6, 10, QLatin1Char('0'));
}

// Of ASCII and of Latin-1: a terminal obeys both.
bool isControl(QChar character)
{
    return character.category() == QChar::Other_Control;
}

// One line stays one line, and reads back as it was.
QString escaped(const QString& text)
{
    QString result;
    for (const QChar character : text) {
        if (character == QLatin1Char('\\'))
            result += QStringLiteral("\\\\");
        else if (isControl(character))
            result += QStringLiteral("\\x%1").arg(character.unicode(), 2, 16, QLatin1Char('0'));
        else
            result += character;
    }
    return result;
}

} // namespace

QString busEventWord(BusEventKind kind)
{
    for (const auto& word : words) {
        if (word.first == kind)
            return QString::fromLatin1(word.second);
    }
    return QString();
}

bool busEventKindOf(const QString& word, BusEventKind* kind)
{
    for (const auto& known : words) {
        if (word == QLatin1String(known.second)) {
            *kind = known.first;
            return true;
        }
    }
    return false;
}

bool carriesBytes(BusEventKind kind)
{
    return kind == BusEventKind::Sent || kind == BusEventKind::SendFailed || isArrival(kind);
}

bool isArrival(BusEventKind kind)
{
    return kind == BusEventKind::Received || kind == BusEventKind::Ignored ||
           kind == BusEventKind::Dropped || kind == BusEventKind::RealTime;
}

bool concernsWire(BusEventKind kind)
{
    return kind != BusEventKind::Accepted && kind != BusEventKind::Decided &&
           kind != BusEventKind::Log;
}

QString traceLine(const TraceEvent& event)
{
    QStringList parts{timeColumn(event.event.time),
                      busEventWord(event.event.kind).leftJustified(wordWidth)};
    if (!event.event.bytes.isEmpty())
        parts << hexText(event.event.bytes);
    if (!event.name.isEmpty())
        parts << QStringLiteral("= ") + event.name;
    if (!event.event.text.isEmpty())
        parts << QStringLiteral(": ") + escaped(event.event.text);
    QString line = parts.join(QLatin1Char(' '));
    while (line.endsWith(QLatin1Char(' ')) && event.event.text.isEmpty())
        line.chop(1);
    return line;
}

TraceWriter::TraceWriter(QIODevice& out, Microseconds start) : m_out(out), m_start(start)
{
    writeLine(QString::fromLatin1(traceHeader));
}

void TraceWriter::comment(const QString& text)
{
    for (const QString& line : text.split(QLatin1Char('\n')))
        writeLine(QStringLiteral("# ") + printable(line));
}

// Messages are noticed when they are looked at, so one may be told after what happened since its
// arrival: the trace is in the order of telling, with times that never go backwards.
void TraceWriter::busEvent(const BusEvent& event)
{
    TraceEvent written;
    written.event = event;
    m_last = qMax(m_last, event.time - m_start);
    written.event.time = m_last;
    if (m_nameOf && carriesBytes(event.kind) && event.kind != BusEventKind::Dropped &&
        event.kind != BusEventKind::RealTime)
        written.name = m_nameOf(event.bytes);
    writeLine(traceLine(written));
}

void TraceWriter::writeLine(const QString& line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    m_ok = m_ok && m_out.write(bytes) == bytes.size();
    if (auto* file = qobject_cast<QFileDevice*>(&m_out))
        m_ok = file->flush() && m_ok;
}

} // namespace hx
