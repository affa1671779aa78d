#include "host/bus/PortBus.h"

#include "host/base/HexText.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace hx {

namespace {

// How soon an interrupt ends a wait.
constexpr Microseconds waitSlice = 50 * microsecondsPerMillisecond;

// A deadline that has passed whatever the clock says: for what has arrived already.
constexpr Microseconds longPast = 0;

// Input that never ends must not keep a command from being sent.
constexpr Microseconds longestDiscard = 250 * microsecondsPerMillisecond;
constexpr int mostDiscardedChunks = 4096;
constexpr int mostReturns = 3; // of a port, while one message is sent

constexpr int mostListed = 5; // messages that came instead, in an error text

bool isMessage(const AssembledEvent& event)
{
    return event.kind == AssembledEvent::Kind::SysEx || event.kind == AssembledEvent::Kind::Short;
}

QRegExp compactPattern(QString text)
{
    text.remove(QLatin1Char(' '));
    text = text.toUpper();
    text.replace(QLatin1String("XX"), QLatin1String(".."));
    return QRegExp(text, Qt::CaseInsensitive, QRegExp::RegExp);
}

QRegExp withoutBlanks(QRegExp rx)
{
    rx.setPattern(rx.pattern().remove(QLatin1Char(' ')));
    return rx;
}

// Whether the expression means the same as its text does to HxMidiData::match(), which is much
// faster.
bool isPatternText(const QRegExp& rx)
{
    const QString text = rx.pattern();
    const QString upper = text.toUpper();
    const QString latin = QString::fromLatin1(text.toLatin1());
    return rx.patternSyntax() == QRegExp::RegExp && !text.isEmpty() && text == upper &&
           text == latin && !text.contains(QLatin1String("XX")) && !text.contains(QChar::Null);
}

ReplyTest testOf(const QRegExp& rx)
{
    if (isPatternText(rx)) {
        const QByteArray text = rx.pattern().toLatin1();
        return [text](const HxMidiData& message) { return message.match(text.constData(), true); };
    }
    return [rx](const HxMidiData& message) { return message.match(rx, true); };
}

AssemblerLimits scaled(AssemblerLimits limits, const Patience& patience)
{
    limits.idle *= patience.factor;
    return limits;
}

QString shown(const QString& pattern)
{
    return pattern.isEmpty() ? QStringLiteral("any message") : pattern;
}

} // namespace

ReplyTest replyTest(const QString& pattern)
{
    return testOf(compactPattern(pattern));
}

ReplyTest replyTest(const ResponceData& pattern)
{
    return testOf(withoutBlanks(pattern.rx));
}

PortBus::PortBus(MidiPort& port, AssemblerLimits limits, const Patience& patience)
    : m_port(port), m_patience(patience), m_assembler(scaled(limits, patience))
{
}

BusData PortBus::transact(BusData command, QString responsePattern, unsigned timeoutMs)
{
    return exchangeByPattern(command, compactPattern(responsePattern), responsePattern, timeoutMs);
}

BusData PortBus::transactExpect(BusData const& command, ResponceData const& expected,
                                unsigned timeoutMs)
{
    return exchangeByPattern(command, withoutBlanks(expected.rx), expected.rx.pattern(), timeoutMs);
}

BusData PortBus::exchangeByPattern(const BusData& command, const QRegExp& rx,
                                   const QString& pattern, unsigned timeoutMs)
{
    if (!rx.isValid() && !command.bytes.isEmpty())
        return fail(ExchangeEnd::BadPattern, BusEventKind::Decided,
                    QStringLiteral("the reply pattern \"%1\" is not valid (%2); nothing was sent")
                        .arg(pattern, rx.errorString()));
    return exchange(command, testOf(rx), shown(pattern), timeoutMs);
}

BusData PortBus::exchange(const BusData& command, const ReplyTest& fits, const QString& expected,
                          unsigned timeoutMs)
{
    if (command.bytes.isEmpty())
        return fail(ExchangeEnd::EmptyCommand, BusEventKind::Decided,
                    QStringLiteral("the command is empty; nothing was sent or waited for"));
    if (!deliver(command.bytes))
        return BusData();
    announce(BusEventKind::Sent, command.bytes, QString());
    m_wait = {expected, qint64(timeoutMs) * m_patience.factor, {}, 0};
    return waitFor(fits, m_wait.timeoutMs * microsecondsPerMillisecond);
}

bool PortBus::deliver(const QByteArray& message)
{
    int returns = -1;
    for (int i = 0; i <= mostReturns && returns != m_port.returns(); ++i) {
        if (!isReady())
            return false;
        returns = m_port.returns();
        if (sendWhole(message))
            return true;
    }
    failSending(message);
    return false;
}

// Whether a message may be sent: not to another product than before. Earlier input is discarded.
bool PortBus::isReady()
{
    discardStaleInput();
    while (m_returnCheck && m_port.returns() != m_checkedReturns) {
        const int returns = m_port.returns();
        const auto check = std::exchange(m_returnCheck, nullptr); // it may ask over this bus
        const ReturnVerdict verdict = check();
        m_returnCheck = check;
        if (verdict.end != ExchangeEnd::Answered) {
            fail(verdict.end, BusEventKind::Decided, verdict.text);
            return false;
        }
        m_checkedReturns = returns;
        discardStaleInput();
    }
    return true;
}

// False when the port did not take it, however often it was asked to.
bool PortBus::sendWhole(const QByteArray& message)
{
    const int returns = m_port.returns();
    for (int attempt = 0; attempt < m_patience.sends; ++attempt) {
        if (attempt > 0)
            rest();
        if (m_port.send(message) == message.size())
            return true;
        if (m_port.isGone() || m_port.returns() != returns || interrupted())
            break;
    }
    return false;
}

void PortBus::rest()
{
    if (m_patience.rest > 0)
        listen(m_patience.rest);
}

void PortBus::failSending(const QByteArray& message)
{
    m_lastEnd = m_port.isGone() ? ExchangeEnd::PortLost : ExchangeEnd::SendFailed;
    errorText =
        QStringLiteral("%1 could not be sent: %2").arg(hexTextShort(message), m_port.errorText);
    announce(BusEventKind::SendFailed, message, m_port.errorText);
    if (m_port.isGone())
        announce(BusEventKind::PortLost, QByteArray(), m_port.errorText);
}

BusData PortBus::fail(ExchangeEnd end, BusEventKind kind, const QString& text)
{
    m_lastEnd = end;
    errorText = text;
    announce(kind, QByteArray(), text);
    return BusData();
}

bool PortBus::interrupted() const
{
    return m_interrupt != nullptr && m_interrupt->load();
}

void PortBus::discardStaleInput()
{
    MidiChunk chunk = m_port.receive(longPast);
    const Microseconds limit =
        chunk.bytes.isEmpty() ? longPast : m_port.clock().now() + longestDiscard;
    for (int i = 1; !chunk.bytes.isEmpty(); ++i) {
        take(chunk);
        if (i == mostDiscardedChunks || m_port.clock().now() > limit)
            break;
        chunk = m_port.receive(longPast);
    }
    queue(m_assembler.flush());
    for (const AssembledEvent& event : m_queue)
        reportUnused(event, QStringLiteral("came before the command was sent"));
    m_queue.clear();
}

// False when the port is gone.
bool PortBus::receiveUntil(Microseconds deadline)
{
    const MidiChunk chunk = m_port.receive(deadline);
    Clock& clock = m_port.clock();
    if (!chunk.bytes.isEmpty()) {
        take(chunk);
        return true;
    }
    if (!m_port.errorText.isEmpty())
        return false;
    clock.sleepUntil(deadline);
    queue(m_assembler.idle(clock.now()));
    return true;
}

void PortBus::take(const MidiChunk& chunk)
{
    if (chunk.lostBefore > 0)
        queue(m_assembler.lose(chunk.time));
    queue(m_assembler.feed(chunk.bytes, chunk.time));
}

void PortBus::queue(AssembledEvents events)
{
    m_queue.erase(m_queue.begin(), m_queue.begin() + std::ptrdiff_t(m_taken));
    m_taken = 0;
    m_queue.insert(m_queue.end(), std::make_move_iterator(events.begin()),
                   std::make_move_iterator(events.end()));
}

BusData PortBus::waitFor(const ReplyTest& fits, Microseconds timeout)
{
    Clock& clock = m_port.clock();
    Microseconds now = clock.now();
    const Microseconds deadline = now + timeout;
    for (;; now = clock.now()) {
        if (interrupted())
            return endWait(ExchangeEnd::Interrupted, BusEventKind::Interrupted,
                           QStringLiteral("interrupted"));
        if (now >= deadline)
            return endWait(ExchangeEnd::TimedOut, BusEventKind::TimedOut,
                           QStringLiteral("no answer"));
        if (!receiveUntil(std::min(deadline, now + waitSlice)))
            return endWait(
                ExchangeEnd::PortLost, BusEventKind::PortLost,
                QStringLiteral("the port %1 is gone (%2)").arg(m_port.name(), m_port.errorText));
        BusData reply = takeFitting(fits);
        if (!reply.bytes.isEmpty())
            return reply;
    }
}

// Looks at what has arrived, in order, up to the first message that fits.
BusData PortBus::takeFitting(const ReplyTest& fits)
{
    while (m_taken < m_queue.size()) {
        const AssembledEvent event = std::move(m_queue[m_taken++]);
        BusData message;
        message.bytes = event.message();
        if (isMessage(event) && fits(message)) {
            report(event, BusEventKind::Received, QString());
            m_lastEnd = ExchangeEnd::Answered;
            errorText.clear();
            return message;
        }
        noteCameInstead(event);
        reportUnused(event, QStringLiteral("does not fit %1").arg(m_wait.expected));
    }
    return BusData();
}

// An unfinished message is given up with the wait, so that its rest cannot end as a late answer.
BusData PortBus::endWait(ExchangeEnd end, BusEventKind kind, const QString& why)
{
    for (const AssembledEvent& event : m_assembler.flush()) {
        noteCameInstead(event);
        reportUnused(event, QString());
    }
    return fail(end, kind,
                QStringLiteral("%1: waited %2 ms for %3; %4")
                    .arg(why, QString::number(m_wait.timeoutMs), m_wait.expected, cameInstead()));
}

void PortBus::noteCameInstead(const AssembledEvent& event)
{
    if (event.kind == AssembledEvent::Kind::RealTime || ++m_wait.unused > mostListed)
        return;
    const QString what = hexTextShort(event.message());
    if (isMessage(event))
        m_wait.cameInstead << what;
    else
        m_wait.cameInstead
            << QStringLiteral("%1 (%2)").arg(what, dropReasonText(event.reason)).trimmed();
}

QString PortBus::cameInstead() const
{
    if (m_wait.unused == 0)
        return QStringLiteral("nothing came");
    QString text =
        QStringLiteral("instead came %1").arg(m_wait.cameInstead.join(QStringLiteral(", ")));
    if (m_wait.unused > mostListed)
        text += QStringLiteral(" and %1 more").arg(m_wait.unused - mostListed);
    return text;
}

AssembledEvents PortBus::listen(Microseconds duration)
{
    Clock& clock = m_port.clock();
    const Microseconds deadline = clock.now() + duration;
    errorText.clear();
    queue({});
    while (clock.now() < deadline && !interrupted()) {
        if (receiveUntil(std::min(deadline, clock.now() + waitSlice)))
            continue;
        fail(ExchangeEnd::PortLost, BusEventKind::PortLost,
             QStringLiteral("the port %1 is gone (%2)").arg(m_port.name(), m_port.errorText));
        break;
    }
    AssembledEvents heard = std::exchange(m_queue, {});
    for (const AssembledEvent& event : heard)
        reportUnused(event, QStringLiteral("heard while listening"));
    return heard;
}

void PortBus::addObserver(BusObserver* observer)
{
    m_observers.push_back(observer);
}

void PortBus::removeObserver(BusObserver* observer)
{
    m_observers.erase(std::remove(m_observers.begin(), m_observers.end(), observer),
                      m_observers.end());
}

void PortBus::note(BusEventKind kind, const QString& text)
{
    announce(kind, QByteArray(), text);
}

const std::atomic<bool>* PortBus::watchInterrupt(const std::atomic<bool>* flag)
{
    return std::exchange(m_interrupt, flag);
}

void PortBus::reportUnused(const AssembledEvent& event, const QString& why)
{
    switch (event.kind) {
    case AssembledEvent::Kind::RealTime:
        return report(event, BusEventKind::RealTime, QString());
    case AssembledEvent::Kind::Dropped:
        return report(event, event.bytes.isEmpty() ? BusEventKind::Decided : BusEventKind::Dropped,
                      dropReasonText(event.reason));
    case AssembledEvent::Kind::SysEx:
    case AssembledEvent::Kind::Short:
        return report(event, BusEventKind::Ignored, why);
    }
}

void PortBus::report(const AssembledEvent& event, BusEventKind kind, const QString& text)
{
    if (isObserved())
        tell({kind, event.lastByte, event.bytes, text});
}

void PortBus::announce(BusEventKind kind, const QByteArray& bytes, const QString& text)
{
    if (isObserved())
        tell({kind, m_port.clock().now(), bytes, text});
}

void PortBus::tell(const BusEvent& event)
{
    for (BusObserver* observer : m_observers)
        observer->busEvent(event);
}

} // namespace hx
