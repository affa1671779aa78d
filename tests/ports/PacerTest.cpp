#include "ports/Pacer.h"

#include <gtest/gtest.h>

namespace hx {

namespace {

// Sends a message as a port does: waits for the turn, hands over, waits for the wire.
void send(Pacer& pacer, int bytes)
{
    pacer.waitForTurn(bytes);
    pacer.waitForWire(bytes);
}

} // namespace

TEST(Pace, DinWireTakes320MicrosecondsAByte)
{
    EXPECT_EQ(Pace().wireTime(1), 320);
    EXPECT_EQ(Pace().wireTime(146), 46720);
    EXPECT_EQ((Pace{0, 0}.wireTime(1000)), 0);
    EXPECT_EQ((Pace{1000000, 0}.wireTime(16379)), 16379);
}

TEST(Pacer, MessagesFollowOneAnotherAtThePaceOfTheWire)
{
    ManualClock clock;
    Pacer pacer(clock, Pace());
    for (int i = 0; i < 10; ++i)
        send(pacer, 100);
    pacer.waitForTurn(1);
    EXPECT_EQ(clock.now(), 10 * 32000);
}

TEST(Pacer, SendingEndsWhenTheLastByteIsOnItsWay)
{
    ManualClock clock;
    Pacer pacer(clock, Pace());
    send(pacer, 100);
    EXPECT_EQ(clock.now(), 32000);
}

TEST(Pacer, GapFollowsEachMessage)
{
    ManualClock clock;
    Pacer pacer(clock, Pace{dinBytesPerSecond, 5000});
    send(pacer, 100);
    pacer.waitForTurn(100);
    EXPECT_EQ(clock.now(), 37000);
}

TEST(Pacer, AWireThatStoodIdleIsNotMadeUpForByFasterMessages)
{
    ManualClock clock;
    Pacer pacer(clock, Pace());
    for (int i = 0; i < 100; ++i) {
        clock.sleepUntil(clock.now() + 500);
        send(pacer, 100);
    }
    EXPECT_EQ(clock.now(), 100 * (32000 + 500));
}

TEST(Pacer, AfterAPauseTheWholeWireTimeCounts)
{
    ManualClock clock;
    Pacer pacer(clock, Pace());
    send(pacer, 100);
    clock.sleepUntil(100000);
    send(pacer, 100);
    pacer.waitForTurn(1);
    EXPECT_EQ(clock.now(), 132000);
}

TEST(Pacer, UnlimitedRateStillNeverOverfillsTheLibrarysBuffer)
{
    ManualClock clock;
    Pacer pacer(clock, Pace{0, 0}, {1000, 4, 200000});
    send(pacer, 496);
    send(pacer, 496);
    EXPECT_EQ(clock.now(), 0);
    send(pacer, 1);
    EXPECT_EQ(clock.now(), 200000);
    send(pacer, 995);
    EXPECT_EQ(clock.now(), 400000);
}

TEST(Pacer, DrainWaitsUntilWhatWasSentHasLeft)
{
    ManualClock clock;
    Pacer idle(clock, Pace(), {1000, 4, 200000});
    EXPECT_TRUE(idle.drain(0));
    EXPECT_EQ(clock.now(), 0);
    Pacer pacer(clock, Pace{0, 0}, {1000, 4, 200000});
    send(pacer, 10);
    EXPECT_FALSE(pacer.drain(199999));
    EXPECT_EQ(clock.now(), 199999);
    EXPECT_TRUE(pacer.drain(200000));
    EXPECT_EQ(clock.now(), 200000);
    Pacer slow(clock, Pace(), {10000, 4, 200000});
    send(slow, 1000);
    EXPECT_TRUE(slow.drain(1000000));
    EXPECT_EQ(clock.now(), 520000);
}

} // namespace hx
