// What 'hxhost simulate' writes into its trace.
#include "apps/hxhost/session/ServedTraffic.h"

#include "host/trace/Trace.h"

#include <QBuffer>

#include <gtest/gtest.h>

namespace {

class ServedTrafficTest : public ::testing::Test {
protected:
    void hear(const char* bytes, hx::Microseconds time)
    {
        clock.sleepUntil(time);
        traffic.heard({QByteArray::fromHex(bytes), time});
    }

    std::string record() { return buffer.data().toStdString(); }

    hx::ManualClock clock;
    QBuffer buffer;
    const bool opened = buffer.open(QIODevice::WriteOnly);
    hx::TraceWriter writer{buffer, 0};
    hx::host::ServedTraffic traffic{writer, clock};
};

} // namespace

TEST_F(ServedTrafficTest, WholeMessagesAreReceivedAndRepliesSent)
{
    hear("F07E7F", 1000);
    hear("F80601F7", 2000);
    clock.sleepUntil(3000);
    traffic.answered(QByteArray::fromHex("F07E000602F7"));
    EXPECT_EQ(traffic.replies(), 1);
    EXPECT_EQ(record(), "# hxtrace 1\n"
                        "     0.002000 realtime    F8\n"
                        "     0.002000 received    F0 7E 7F 06 01 F7\n"
                        "     0.003000 sent        F0 7E 00 06 02 F7\n");
    EXPECT_TRUE(hx::parseTrace(buffer.data()));
}

TEST_F(ServedTrafficTest, WhatStaysTheBeginningOfAMessageIsDropped)
{
    hear("F00102", 1000);
    traffic.silence();
    clock.sleepUntil(5000000);
    traffic.silence();
    hear("F003", 6000000);
    traffic.end();
    EXPECT_EQ(record(),
              "# hxtrace 1\n"
              "     0.001000 dropped     F0 01 02 : a message whose rest did not come in time\n"
              "     6.000000 dropped     F0 03 : a message still unfinished when the wait for it "
              "ended\n");
    EXPECT_EQ(traffic.replies(), 0);
}
