// One command over a bus: what is handed on, what comes back, what is logged.
#include "plugin/Transport.h"

#include "plugin/ValdrinBootInterface.h"
#include "tests/support/FakeBus.h"
#include "tests/support/LogCapture.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

namespace {

const HxMidiData storedCrcRequest("F0 00 6B 2D 30 41 30 F7");

class Transport : public testing::Test {
protected:
    void SetUp() override { plugin.bus = &bus; }
    void TearDown() override { EXPECT_TRUE(log.onlyDefaultDebug()); }

    ValdrinBootInterface plugin;
    FakeBus bus;
    LogCapture log;
};

} // namespace

TEST_F(Transport, writeDataCommandHandsEverythingOnUnchanged)
{
    bus.replies = {HxMidiData("F0 01 F7")};
    const BusData reply = hx::writeDataCommand(&bus, storedCrcRequest, "(F0 .. F7|XX)", 4711);
    EXPECT_EQ(reply.bytes, QByteArray("\xF0\x01\xF7"));
    ASSERT_EQ(bus.exchanges.size(), 1);
    EXPECT_EQ(bus.exchanges[0].command.bytes, storedCrcRequest.bytes);
    EXPECT_EQ(bus.exchanges[0].pattern, "(F0 .. F7|XX)");
    EXPECT_EQ(bus.exchanges[0].timeoutMs, 4711U);
    EXPECT_FALSE(bus.exchanges[0].compiled);
    EXPECT_TRUE(log.texts().isEmpty());
}

TEST_F(Transport, writeDataCommandWithoutBusLogsTheCommandUnquoted)
{
    EXPECT_TRUE(hx::writeDataCommand(nullptr, storedCrcRequest, "F0", 10).bytes.isEmpty());
    EXPECT_EQ(log.texts(),
              QStringList{"IOSUPORT:  The bus() is invalid, command F0006B2D304130F7 failed"});
}

TEST_F(Transport, writeDataCommandLogsTheBusErrorQuotedWhenNothingCame)
{
    bus.errorText = QStringLiteral("no answer");
    EXPECT_TRUE(hx::writeDataCommand(&bus, storedCrcRequest, "F0", 10).bytes.isEmpty());
    EXPECT_EQ(log.texts(), QStringList{"IOSUPORT:  \"no answer\""});
}

TEST_F(Transport, writeDataCommandTakesOneByteForSuccess)
{
    bus.replies = {HxMidiData(0)};
    EXPECT_EQ(hx::writeDataCommand(&bus, storedCrcRequest, "F0", 10).bytes, QByteArray(1, '\0'));
    EXPECT_TRUE(log.texts().isEmpty());
}

TEST_F(Transport, deviceCommandTakesTheTimeoutFromTheDictionary)
{
    bus.replies = {HxMidiData("F7")};
    const BusData reply = hx::midiOutWithCmdAndResponceStrings(storedCrcRequest, "F7", &plugin);
    EXPECT_EQ(reply.bytes, QByteArray("\xF7"));
    ASSERT_EQ(bus.exchanges.size(), 1);
    EXPECT_EQ(bus.exchanges[0].timeoutMs, 2200U);
    EXPECT_EQ(bus.exchanges[0].pattern, "F7");
    EXPECT_EQ(bus.exchanges[0].command.bytes, storedCrcRequest.bytes);
    EXPECT_TRUE(log.texts().isEmpty());
}

TEST_F(Transport, deviceCommandReadsItsTimeoutAsUnsigned)
{
    plugin.protocolMap.insert("command.timeout.ms", 4000000000U);
    hx::midiOutWithCmdAndResponceStrings(storedCrcRequest, "F7", &plugin);
    ASSERT_EQ(bus.exchanges.size(), 1);
    EXPECT_EQ(bus.exchanges[0].timeoutMs, 4000000000U);
}

TEST_F(Transport, deviceCommandWithAMissingTimeoutKeyWaitsZero)
{
    plugin.protocolMap.remove("command.timeout.ms");
    bus.replies = {HxMidiData("F7")};
    hx::midiOutWithCmdAndResponceStrings(storedCrcRequest, "F7", &plugin);
    ASSERT_EQ(bus.exchanges.size(), 1);
    EXPECT_EQ(bus.exchanges[0].timeoutMs, 0U);
    EXPECT_EQ(log.texts(),
              QStringList{"ERROR: Missing MIDI Protocol for key:  \"command.timeout.ms\""});
}

TEST_F(Transport, deviceCommandWithoutBusLogsQuotedAndReadsNoTimeout)
{
    plugin.bus = nullptr;
    plugin.protocolMap.remove("command.timeout.ms"); // reading it would log a second line
    EXPECT_TRUE(
        hx::midiOutWithCmdAndResponceStrings(storedCrcRequest, "F7", &plugin).bytes.isEmpty());
    EXPECT_EQ(log.texts(),
              QStringList{"IOSUPORT:  \"The bus() is invalid, command F0006B2D304130F7 failed\""});
}

TEST_F(Transport, deviceCommandWithoutDeviceFailsLikeOneWithoutBus)
{
    EXPECT_TRUE(
        hx::midiOutWithCmdAndResponceStrings(storedCrcRequest, "F7", nullptr).bytes.isEmpty());
    EXPECT_EQ(log.texts(),
              QStringList{"IOSUPORT:  \"The bus() is invalid, command F0006B2D304130F7 failed\""});
}

TEST_F(Transport, deviceCommandLogsCommandAndBusErrorWhenNothingCame)
{
    bus.errorText = QStringLiteral("timeout");
    hx::midiOutWithCmdAndResponceStrings(storedCrcRequest, "F7", &plugin);
    EXPECT_EQ(log.texts(), QStringList{"IOSUPORT:  \"ERROR F0006B2D304130F7 timeout\""});
}

TEST_F(Transport, percentSignsInTheBusErrorAreKept)
{
    bus.errorText = QStringLiteral("100%1 %2");
    hx::midiOutWithCmdAndResponceStrings(storedCrcRequest, "F7", &plugin);
    EXPECT_EQ(log.texts(), QStringList{"IOSUPORT:  \"ERROR F0006B2D304130F7 100%1 %2\""});
}

TEST_F(Transport, failuresLeaveTheLastErrorAlone)
{
    plugin.setLastError(QStringLiteral("kept"));
    hx::midiOutWithCmdAndResponceStrings(storedCrcRequest, "F7", &plugin);
    plugin.bus = nullptr;
    hx::midiOutWithCmdAndResponceStrings(storedCrcRequest, "F7", &plugin);
    EXPECT_TRUE(plugin.lastError.endsWith("kept"));
}
