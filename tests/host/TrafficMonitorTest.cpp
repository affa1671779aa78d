#include "host/bus/TrafficMonitor.h"

#include "tests/support/QtPrinting.h"
#include "tests/support/ScriptedPort.h"

#include <gtest/gtest.h>

using namespace hx;

namespace {

class TrafficMonitorTest : public testing::Test {
protected:
    void arrive(const char* text) { port.arrive(QByteArray::fromHex(text), 1000); }

    ScriptedPort port;
    PortBus bus{port};
};

} // namespace

TEST_F(TrafficMonitorTest, IsQuietWhenNothingComes)
{
    const TrafficReport report = listenForTraffic(bus);
    EXPECT_TRUE(report.quiet());
    EXPECT_TRUE(report.warnings().isEmpty());
    EXPECT_EQ(port.clock().now(), 1000 * 1000);
    EXPECT_TRUE(port.sent.empty());
}

TEST_F(TrafficMonitorTest, IsNotQuietWithAnyOfThem)
{
    for (const char* heard : {"F8", "FE", "FA", "F001F7", "05F7", "904001"}) {
        arrive(heard);
        const TrafficReport report = listenForTraffic(bus);
        EXPECT_FALSE(report.quiet()) << heard;
        EXPECT_EQ(report.warnings().size(), 1) << heard;
    }
}

TEST_F(TrafficMonitorTest, CountsWhatItHears)
{
    arrive("F8F8FEFAFF F001F7 904001 4102 05F7");
    const TrafficReport report = listenForTraffic(bus);
    EXPECT_EQ(report.clockBytes, 2);
    EXPECT_EQ(report.activeSensingBytes, 1);
    EXPECT_EQ(report.otherRealTime, 2);
    EXPECT_EQ(report.sysExMessages, 1);
    EXPECT_EQ(report.shortMessages, 2);
    EXPECT_EQ(report.droppedBytes, 2);
    EXPECT_FALSE(report.quiet());
}

TEST_F(TrafficMonitorTest, CountsTheAcknowledgementsOfAnotherHostsUpdate)
{
    arrive("F0006B2D3041430C00F7 F0006B2D3041430C01F7 F0006B2D30412F0030000041F7 41430C00");
    const TrafficReport report = listenForTraffic(
        bus, trafficTime, replyTest(QStringLiteral("F0 00 6B 2D 30 41 4[23] 0C .. F7")));
    EXPECT_EQ(report.acknowledgements, 2);
    EXPECT_EQ(report.sysExMessages, 3);
    arrive("F0006B2D3041430C00F7");
    EXPECT_EQ(listenForTraffic(bus).acknowledgements, 0);
}

TEST_F(TrafficMonitorTest, WarnsOfEachKindOfTraffic)
{
    arrive("F8F8");
    EXPECT_EQ(listenForTraffic(bus).warnings(),
              QStringList({"MIDI clock is running (2 ticks heard); stop the sequencer that sends "
                           "it."}));
    arrive("FE");
    EXPECT_EQ(listenForTraffic(bus).warnings(),
              QStringList({"An instrument sends active sensing (1 times heard); disconnect it, "
                           "unless it is the product itself."}));
    arrive("FA");
    EXPECT_EQ(listenForTraffic(bus).warnings(),
              QStringList({"1 other real-time messages were heard; stop whatever sends them."}));
    arrive("F001F7904001");
    EXPECT_EQ(listenForTraffic(bus).warnings(),
              QStringList({"Another sender is active (1 SysEx and 1 other messages heard); "
                           "disconnect it or stop it."}));
    arrive("F7");
    EXPECT_EQ(listenForTraffic(bus).warnings(),
              QStringList({"1 bytes were heard that form no message; check the cable and the "
                           "interface."}));
}

TEST_F(TrafficMonitorTest, SaysThatThePortWentAway)
{
    port.lostAt = 500;
    EXPECT_EQ(listenForTraffic(bus).portError, "the port scripted is gone (unplugged)");
}
