#include "host/trace/TraceSequence.h"

#include "host/base/HexText.h"

#include <QRegularExpression>

#include <algorithm>

namespace hx {

namespace {

using Kind = SequenceRow::Kind;

constexpr int keptBefore = 2;    // of exchanges that are all alike
constexpr int keptAfter = 1;     // of them
constexpr int fewestOmitted = 3; // fewer are drawn
constexpr int shownBytes = 8;

// A message and all that happened until the next one, or what is before the first message.
struct Exchange {
    std::vector<SequenceRow> rows;
    qint64 bytes = 0;

    // Alike are a message with one good answer and another such, by the answer's name.
    QString likeness;
};

QString messageText(const TraceEvent& event)
{
    if (!event.name.isEmpty())
        return event.name;
    const QByteArray& bytes = event.event.bytes;
    QString text = hexText(bytes.left(shownBytes));
    if (bytes.size() > shownBytes)
        text += QStringLiteral(" ... %1 bytes").arg(bytes.size());
    return text;
}

// A note quotes no whole messages, and is short.
QString shortNote(QString text)
{
    constexpr int longest = 240;
    static const QRegularExpression manyBytes(
        QStringLiteral("\\b((?:[0-9A-F]{2} ){8})(?:[0-9A-F]{2} ){8,}"));
    text.replace(manyBytes, QStringLiteral("\\1... "));
    if (text.size() <= longest)
        return text;
    return text.left(longest) + QStringLiteral(" ...");
}

class Exchanges {
public:
    void take(const TraceEvent& event);
    std::vector<Exchange> end();

private:
    void takeSent(const TraceEvent& event);
    void takeDecision(const TraceEvent& event);
    void addRow(Kind kind, const TraceEvent& event, const QString& text);
    void addNote(const QString& text); // to the last row
    void endExchange();

    std::vector<Exchange> m_exchanges;
    Exchange m_open;
    QByteArray m_lastMessage;
};

void Exchanges::take(const TraceEvent& event)
{
    const QString& reason = event.event.text;
    switch (event.event.kind) {
    case BusEventKind::Sent:
        return takeSent(event);
    case BusEventKind::Received:
        return addRow(isRefusalName(event.name) ? Kind::Refusal : Kind::Reply, event,
                      messageText(event));
    case BusEventKind::Ignored:
        addRow(Kind::Ignored, event, messageText(event));
        return addNote(reason);
    case BusEventKind::Dropped:
        addRow(Kind::Dropped, event, messageText(event));
        return addNote(reason);
    case BusEventKind::Decided:
        return takeDecision(event);
    case BusEventKind::Accepted: // the answer above it says so
    case BusEventKind::RealTime:
    case BusEventKind::Log:
        return;
    case BusEventKind::TimedOut:
    case BusEventKind::PortLost:
    case BusEventKind::PortBack:
    case BusEventKind::SendFailed:
    case BusEventKind::Interrupted:
        return addRow(Kind::Failure, event,
                      busEventWord(event.event.kind) + QStringLiteral(": ") + shortNote(reason));
    }
}

void Exchanges::takeSent(const TraceEvent& event)
{
    endExchange();
    const bool isRetry = event.event.bytes == m_lastMessage;
    addRow(isRetry ? Kind::Retry : Kind::Message, event, messageText(event));
    m_open.bytes = event.event.bytes.size();
    m_lastMessage = event.event.bytes;
}

void Exchanges::takeDecision(const TraceEvent& event)
{
    if (m_open.rows.empty())
        addRow(Kind::Note, event, QString());
    addNote(event.event.text);
}

void Exchanges::addNote(const QString& text)
{
    m_open.rows.back().notes << shortNote(text);
}

void Exchanges::addRow(Kind kind, const TraceEvent& event, const QString& text)
{
    SequenceRow row;
    row.kind = kind;
    row.time = event.event.time;
    row.text = text;
    m_open.rows.push_back(row);
}

void Exchanges::endExchange()
{
    const std::vector<SequenceRow>& rows = m_open.rows;
    if (rows.size() == 2 && rows[0].kind == Kind::Message && rows[1].kind == Kind::Reply &&
        rows[0].notes.isEmpty() && rows[1].notes.isEmpty())
        m_open.likeness = rows[1].text;
    if (!rows.empty())
        m_exchanges.push_back(m_open);
    m_open = Exchange();
}

std::vector<Exchange> Exchanges::end()
{
    endExchange();
    return m_exchanges;
}

void append(std::vector<SequenceRow>* rows, const Exchange& exchange)
{
    rows->insert(rows->end(), exchange.rows.begin(), exchange.rows.end());
}

SequenceRow omitted(std::vector<Exchange>::const_iterator from,
                    std::vector<Exchange>::const_iterator to)
{
    SequenceRow row;
    row.kind = Kind::Omission;
    row.time = from->rows.front().time;
    row.events = 0;
    qint64 bytes = 0;
    for (auto exchange = from; exchange != to; ++exchange) {
        bytes += exchange->bytes;
        row.events += int(exchange->rows.size());
    }
    row.text = QStringLiteral("%1 more messages, %2 bytes, each answered by %3")
                   .arg(to - from)
                   .arg(bytes)
                   .arg(from->likeness);
    return row;
}

// Of a run of exchanges that are all alike, the first ones and the last.
void appendRun(std::vector<SequenceRow>* rows, std::vector<Exchange>::const_iterator from,
               std::vector<Exchange>::const_iterator to)
{
    const bool abbreviates = to - from >= keptBefore + keptAfter + fewestOmitted;
    const auto gap = abbreviates ? from + keptBefore : to;
    const auto rest = abbreviates ? to - keptAfter : to;
    std::for_each(from, gap, [rows](const Exchange& exchange) { append(rows, exchange); });
    if (abbreviates)
        rows->push_back(omitted(gap, rest));
    std::for_each(rest, to, [rows](const Exchange& exchange) { append(rows, exchange); });
}

std::vector<SequenceRow> abbreviated(const std::vector<Exchange>& exchanges)
{
    std::vector<SequenceRow> rows;
    for (auto from = exchanges.begin(); from != exchanges.end();) {
        const auto to = std::find_if(from + 1, exchanges.end(), [from](const Exchange& exchange) {
            return from->likeness.isEmpty() || exchange.likeness != from->likeness;
        });
        appendRun(&rows, from, to);
        from = to;
    }
    return rows;
}

// Cuts out the middle of what is still too long: the beginning and the end tell most.
std::vector<SequenceRow> shortened(std::vector<SequenceRow> rows)
{
    const int excess = int(rows.size()) - maxSequenceRows;
    if (excess <= 0)
        return rows;
    const auto from = rows.begin() + maxSequenceRows / 2;
    const auto to = from + excess + 1;
    SequenceRow gap;
    gap.kind = Kind::Omission;
    gap.time = from->time;
    gap.events = 0;
    for (auto row = from; row != to; ++row)
        gap.events += row->events;
    gap.text = QStringLiteral("%1 more events").arg(gap.events);
    *from = gap;
    rows.erase(from + 1, to);
    return rows;
}

} // namespace

bool isRefusalName(const QString& name)
{
    return name == QLatin1String("nak") || name.endsWith(QLatin1String(".bad")) ||
           name.endsWith(QLatin1String(".failed"));
}

std::vector<SequenceRow> sequenceRows(const TraceEvents& events)
{
    Exchanges exchanges;
    for (const TraceEvent& event : events)
        exchanges.take(event);
    return shortened(abbreviated(exchanges.end()));
}

} // namespace hx
