#include "host/base/Clock.h"

#include <gtest/gtest.h>

using namespace hx;

TEST(SteadyClock, NeverGoesBackwards)
{
    SteadyClock clock;
    Microseconds last = clock.now();
    for (int i = 0; i < 1000; ++i) {
        const Microseconds now = clock.now();
        ASSERT_GE(now, last);
        last = now;
    }
}

TEST(SteadyClock, HasWaitedWhenItReturns)
{
    SteadyClock clock;
    const Microseconds until = clock.now() + 50;
    clock.sleepUntil(until);
    EXPECT_GE(clock.now(), until);
    clock.sleepUntil(until - 1000000); // long past: returns at once
}

TEST(ManualClock, MovesByWaitingOnly)
{
    ManualClock clock;
    EXPECT_EQ(clock.now(), 0);
    clock.sleepUntil(700);
    EXPECT_EQ(clock.now(), 700);
    clock.sleepUntil(300);
    EXPECT_EQ(clock.now(), 700);
}
