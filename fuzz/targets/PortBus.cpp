// The host's bus over a port that delivers anything at any time: what it returns has arrived and
// fits, it ends within its deadline, and every byte that arrived is reported once.
#include "host/bus/PortBus.h"

#include "fuzz/support/FuzzTarget.h"

namespace {

using namespace hx;
using namespace hx::fuzz;

constexpr unsigned timeoutMs = 100;

// Delivers the chunks that the input holds; a chunk comes after the one before it.
class AnyPort final : public MidiPort {
public:
    explicit AnyPort(FuzzInput& input) : m_input(input) {}

    QString name() const override { return QStringLiteral("any"); }
    Clock& clock() override { return m_clock; }

    qint64 send(const QByteArray& message) override
    {
        sent += message;
        errorText = m_input.byte() == 0xFF ? QStringLiteral("full") : QString();
        return errorText.isEmpty() ? message.size() : 0;
    }

    MidiChunk receive(Microseconds deadline) override
    {
        errorText.clear();
        if (!m_hasNext)
            fetchNext();
        if (m_isLost) {
            errorText = QStringLiteral("unplugged");
            return {};
        }
        if (m_next.bytes.isEmpty() || m_next.time > qMax(deadline, m_clock.now())) {
            m_clock.sleepUntil(deadline);
            return {};
        }
        m_clock.sleepUntil(m_next.time);
        m_hasNext = false;
        delivered += m_next.bytes;
        return m_next;
    }

    QList<QByteArray> sent;
    QByteArray delivered;

private:
    void fetchNext()
    {
        m_hasNext = true;
        m_next = MidiChunk();
        if (m_input.atEnd())
            return;
        const int how = m_input.byte();
        m_isLost = how == 0xFF;
        const Microseconds delay = how >= 0xC0 ? (how % 64) * 10000 : how >> 4;
        m_next = {m_input.take(1 + how % 16), m_clock.now() + delay};
    }

    FuzzInput& m_input;
    ManualClock m_clock;
    MidiChunk m_next;
    bool m_hasNext = false;
    bool m_isLost = false;
};

// Gathers what is reported, in the order of arrival but for real-time bytes.
class Gatherer final : public BusObserver {
public:
    void busEvent(const BusEvent& event) override
    {
        if (event.kind == BusEventKind::RealTime)
            realTime += event.bytes;
        else if (event.kind != BusEventKind::Sent && event.kind != BusEventKind::SendFailed)
            others += event.bytes;
        if (event.kind == BusEventKind::Received)
            received += event.bytes;
        require(event.time >= 0, "an event has its time");
    }

    QByteArray realTime;
    QByteArray others;
    QList<QByteArray> received;
};

bool isMessage(const QByteArray& bytes)
{
    const auto status = static_cast<quint8>(bytes.at(0));
    if (status == 0xF0 && !bytes.endsWith('\xF7'))
        return false;
    const auto dataEnd = bytes.size() - (status == 0xF0 ? 1 : 0);
    for (int i = 1; i < dataEnd; ++i) {
        if ((bytes.at(i) & 0x80) != 0)
            return false;
    }
    return status >= 0x80;
}

void exchange(FuzzInput& input, PortBus& bus, AnyPort& port, Gatherer& seen)
{
    static const char* const patterns[] = {"", "F0 .. F7", "F0 00 6B 2D 30 41 2[0-9]", "90", "(F0"};
    const int how = input.choice(20);
    const QString pattern = QString::fromLatin1(patterns[how % 5]);
    const QByteArray command = how >= 15 ? QByteArray() : QByteArray("\xF0\x01\xF7", 3);
    const Microseconds start = port.clock().now();
    const auto sentBefore = port.sent.size();
    const auto receivedBefore = seen.received.size();
    const BusData reply = how & 1 ? bus.transact(HxMidiData(command), pattern, timeoutMs)
                                  : bus.transactExpect(HxMidiData(command),
                                                       pattern.toLatin1().constData(), timeoutMs);

    const Microseconds longest =
        2 * 250 * microsecondsPerMillisecond + timeoutMs * microsecondsPerMillisecond;
    require(port.clock().now() - start <= longest, "an exchange ends within its deadline");
    const bool isAnswered = !reply.bytes.isEmpty();
    requireSame(bus.lastEnd() == ExchangeEnd::Answered, isAnswered, "how the exchange ended");
    requireSame(bus.errorText.isEmpty(), isAnswered, "a failure has its text");
    requireSame(seen.received.size() - receivedBefore, isAnswered ? 1 : 0, "one reply is received");
    const bool mayBeSent = !command.isEmpty() && how % 5 != 4;
    requireSame(port.sent.size() - sentBefore, mayBeSent ? 1 : 0, "one command is sent");
    if (!isAnswered)
        return;
    require(isMessage(reply.bytes), "a reply is a whole message");
    require(reply.bytes.endsWith(seen.received.last()), "a reply is what was received");
    require(reply.match(pattern.toLatin1().constData(), true), "a reply fits");
}

void requireAccounted(const AnyPort& port, const Gatherer& seen)
{
    QByteArray realTime;
    QByteArray others;
    for (const char byte : port.delivered)
        (static_cast<quint8>(byte) >= 0xF8 ? realTime : others) += byte;
    requireSame(seen.realTime, realTime, "every real-time byte is reported once");
    requireSame(seen.others, others, "every other byte is reported once");
}

void run(FuzzInput& input)
{
    AnyPort port(input);
    AssemblerLimits limits;
    limits.maxBytes = 16;
    limits.idle = 20000;
    PortBus bus(port, limits);
    Gatherer seen;
    bus.addObserver(&seen);
    for (int i = 0; i < 6 && !input.atEnd(); ++i) {
        if (input.byte() >= 0x20) {
            exchange(input, bus, port, seen);
            continue;
        }
        const Microseconds start = port.clock().now();
        bus.listen(30000);
        require(port.clock().now() - start <= 30000 + 1000, "listening ends in time");
    }
    bus.transact(HxMidiData(0x99), QString(), 0); // what is left unlooked at is reported before it
    bus.transact(HxMidiData(0x99), QString(), 0);
    requireAccounted(port, seen);
}

const Target target("port_bus", run);

} // namespace
