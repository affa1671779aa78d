// What one thread tells another that cannot keep up with it.
#include "apps/hxupdate/model/Newest.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using hxupdate::Newest;

TEST(Newest, OnlyTheFirstValueThatWaitsHasToBeTold)
{
    Newest<int> told;
    EXPECT_TRUE(told.put(1));
    EXPECT_FALSE(told.put(2));
    EXPECT_FALSE(told.put(3));
    EXPECT_EQ(told.take(), 3);
    EXPECT_TRUE(told.put(4));
    EXPECT_EQ(told.take(), 4);
}

TEST(Newest, NoValueIsTakenTwiceAndTheLastOneArrives)
{
    constexpr int last = 20000;
    Newest<int> told;
    std::atomic<int> waiting{0};
    std::thread fast([&] {
        for (int value = 1; value <= last; ++value) {
            if (told.put(value))
                ++waiting;
        }
    });
    int taken = 0;
    while (taken < last) {
        if (waiting == 0)
            continue;
        --waiting;
        const int value = told.take();
        EXPECT_GT(value, taken);
        taken = value;
    }
    fast.join();
    EXPECT_EQ(waiting, 0);
}
