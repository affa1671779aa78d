// How long a bus waits: its patience, an interrupt, and how often it looks at the clock.
#include "tests/host/PortBusFixture.h"

#include <utility>

using namespace hx;

TEST_F(PortBusTest, APatientBusWaitsFourTimesAsLong)
{
    PortBus patient(port, {}, slowHostPatience);
    EXPECT_TRUE(patient.transact(hex("F0006B2D304130F7"), "F0", 100).bytes.isEmpty());
    EXPECT_EQ(port.clock().now(), 400000);
    EXPECT_TRUE(patient.errorText.startsWith("no answer: waited 400 ms for F0"))
        << patient.errorText.toStdString();
}

TEST_F(PortBusTest, APatientBusBearsALongerPauseWithinAMessage)
{
    PortBus patient(port, {}, slowHostPatience);
    for (const Microseconds pause : {3900000, 4100000}) {
        port.answer = [&](const QByteArray&, int) {
            port.arrive(hex("F00102"));
            port.arrive(hex("03F7"), pause);
        };
        const BusData reply = patient.transact(hex("F0006B2D304130F7"), "F0", 2000);
        EXPECT_EQ(reply.bytes, pause < 4000000 ? hex("F0010203F7") : QByteArray()) << pause;
    }
}

TEST_F(PortBusTest, APatientBusHandsAMessageToThePortAgain)
{
    PortBus patient(port, {}, slowHostPatience);
    port.answer = [&](const QByteArray&, int) { port.arrive(hex("F001F7")); };
    port.refusals = 3;
    EXPECT_EQ(patient.transact(hex("F0006B2D304130F7"), "F0", 100).bytes, hex("F001F7"));
    EXPECT_EQ(port.clock().now(), 3 * slowHostPatience.rest);
    port.refusals = 4;
    EXPECT_TRUE(patient.transact(hex("F0006B2D304130F7"), "F0", 100).bytes.isEmpty());
    EXPECT_EQ(patient.lastEnd(), ExchangeEnd::SendFailed);
    EXPECT_EQ(patient.errorText, "F0 00 6B 2D 30 41 30 F7 could not be sent: aborted");
    EXPECT_EQ(port.sent.size(), 1u);
}

TEST_F(PortBusTest, APortThatIsGoneIsNotAskedAgain)
{
    PortBus patient(port, {}, slowHostPatience);
    port.refusals = 1;
    port.isUnplugged = true;
    EXPECT_TRUE(patient.transact(hex("F0006B2D304130F7"), "F0", 100).bytes.isEmpty());
    EXPECT_EQ(port.clock().now(), 0);
    EXPECT_EQ(port.refusals, 0);
}

TEST_F(PortBusTest, ABusWithoutPatienceDoesNotRest)
{
    bus.rest();
    EXPECT_EQ(port.clock().now(), 0);
    PortBus patient(port, {}, slowHostPatience);
    patient.rest();
    EXPECT_EQ(port.clock().now(), 2500000);
}

TEST_F(PortBusTest, AnInterruptEndsAWaitSoon)
{
    std::atomic<bool> flag{true};
    EXPECT_EQ(bus.watchInterrupt(&flag), nullptr);
    EXPECT_TRUE(transact(0xFFFFFFFF).bytes.isEmpty());
    EXPECT_EQ(bus.lastEnd(), ExchangeEnd::Interrupted);
    EXPECT_LE(port.clock().now(), 50 * 1000);
    EXPECT_EQ(bus.watchInterrupt(nullptr), &flag);
}

TEST_F(PortBusTest, AnInterruptDuringAWaitEndsItWithinASlice)
{
    std::atomic<bool> flag{false};
    bus.watchInterrupt(&flag);
    port.answer = [&](const QByteArray&, int) { flag = true; };
    EXPECT_TRUE(transact(2200).bytes.isEmpty());
    EXPECT_EQ(recorder.count(BusEventKind::Interrupted), 1);
}

namespace {

// Answers each command at once, and counts how often its clock is read.
class PromptPort final : public MidiPort, private Clock {
public:
    QString name() const override { return QStringLiteral("prompt"); }
    Clock& clock() override { return *this; }

    qint64 send(const QByteArray& message) override
    {
        m_waiting = checksumReply;
        return message.size();
    }

    MidiChunk receive(Microseconds) override { return {std::exchange(m_waiting, QByteArray()), 7}; }

    int reads = 0;

private:
    Microseconds now() override { return ++reads; }
    void sleepUntil(Microseconds) override {}

    QByteArray m_waiting;
};

} // namespace

TEST(PortBusReadsTheClock, onceForACommandThatIsAnsweredAtOnce)
{
    PromptPort port;
    PortBus bus(port);
    EXPECT_EQ(bus.transact(HxMidiData(command), checksumPattern, 2200).bytes, checksumReply);
    EXPECT_EQ(port.reads, 1);
}

TEST(PortBusReadsTheClock, twiceMoreForInputThatCameBeforeTheCommand)
{
    PromptPort port;
    PortBus bus(port);
    port.send(command); // its answer is stale when the bus sends
    EXPECT_EQ(bus.transact(HxMidiData(command), checksumPattern, 2200).bytes, checksumReply);
    EXPECT_EQ(port.reads, 3);
}
