// The serial number read, which asks for keys that the dictionary does not hold.
#include "plugin/ValdrinBootInterface.h"
#include "tests/plugin/LoadedPlugin.h"

namespace {

const QStringList threeMissingKeys{
    "ERROR: Missing MIDI Protocol for key:  \"get.esn.cmd\"",
    "ERROR: Missing MIDI Protocol for key:  \"get.esn.rtval.response\"",
    "ERROR: Missing MIDI Protocol for key:  \"get.esn.rtval.offset\"",
};

} // namespace

TEST_F(LoadedPlugin, esnSendsAnEmptyCommandWithAnEmptyPatternAndNoTimeout)
{
    EXPECT_TRUE(device->esn().isNull());
    ASSERT_EQ(bus.exchanges.size(), 1);
    EXPECT_TRUE(bus.exchanges[0].command.bytes.isEmpty());
    EXPECT_TRUE(bus.exchanges[0].pattern.isEmpty());
    EXPECT_EQ(bus.exchanges[0].timeoutMs, 4294967295U);
    EXPECT_FALSE(bus.exchanges[0].compiled);
}

TEST_F(LoadedPlugin, esnLogsThreeMissingKeysAndNoTransportLine)
{
    device->esn();
    EXPECT_EQ(log.texts(), threeMissingKeys);
}

TEST_F(LoadedPlugin, esnLogsThreeMissingKeysWithAReplyToo)
{
    bus.replies = {HxMidiData(QByteArray("0102"))};
    EXPECT_TRUE(device->esn().isNull());
    EXPECT_EQ(log.texts(), threeMissingKeys);
}

TEST_F(LoadedPlugin, esnTakesNoTextOfFewerThanEightBytes)
{
    for (const char* text : {"01020304", "0x123456", "FFFF,FFF", "1,2,3,4,"}) {
        bus.replies = {HxMidiData(QByteArray(text))};
        EXPECT_TRUE(device->esn().isNull()) << text;
    }
}

// Eight bytes come of eight characters only where they are read as negative numbers. The bytes are
// then read as hex text once more, for nothing but these log lines.
TEST_F(LoadedPlugin, esnGivesSixteenDigitsForATextOfTwoNegativeNumbers)
{
    const QString pairs = QStringLiteral("HxMidiData::HxMidiData(const char*,int) - "
                                         "error converting hex string:  \"%1\"");
    const QString bytesAsText = QString::fromLatin1("\xFF\xFF\xFF\xF3\xFF\xFF\xFF\xF2");
    const QString line = pairs.arg(bytesAsText);
    bus.replies = {HxMidiData(QByteArray("-d-e"))};
    EXPECT_EQ(device->esn(), "FFFFFFF3FFFFFFF2");
    EXPECT_EQ(log.texts(), threeMissingKeys + QStringList({line, line, line, line}));
}

TEST_F(LoadedPlugin, esnReadsTheFirstEightCharactersUpToAZero)
{
    bus.replies = {HxMidiData(QByteArray("-2,-3,,,99")), HxMidiData(QByteArray("-2,-3\0,4", 8)),
                   HxMidiData(QByteArray("-2,-3,4")), HxMidiData(QByteArray("\0-2,-3", 6))};
    EXPECT_EQ(device->esn(), "FFFFFFFEFFFFFFFD");
    EXPECT_EQ(device->esn(), "FFFFFFFEFFFFFFFD");
    EXPECT_TRUE(device->esn().isNull()); // nine bytes
    EXPECT_TRUE(device->esn().isNull());
}

TEST(SerialNumber, takesCommandPatternAndOffsetFromTheDictionary)
{
    ValdrinBootInterface plugin;
    FakeBus bus;
    plugin.bus = &bus;
    const LogCapture log;
    plugin.protocolMap.insert("get.esn.cmd", "F07EF7");
    plugin.protocolMap.insert("get.esn.rtval.response", "F07E..");
    plugin.protocolMap.insert("get.esn.rtval.offset", 2);
    bus.replies = {HxMidiData(QByteArray("zz-2,-3"))};
    EXPECT_EQ(plugin.esn(), "FFFFFFFEFFFFFFFD");
    ASSERT_EQ(bus.exchanges.size(), 1);
    EXPECT_EQ(bus.exchanges[0].command.bytes, QByteArray("\xF0\x7E\xF7"));
    EXPECT_EQ(bus.exchanges[0].pattern, "F07E..");
}

// A reply that was adopted from foreign memory has no zero behind it.
TEST_F(LoadedPlugin, esnReadsNothingBehindAnAdoptedReply)
{
    const std::vector<char> memory{'0', '1'};
    HxMidiData adopted;
    adopted.copyFromBuffer(memory.data(), memory.size());
    bus.replies = {adopted};
    EXPECT_TRUE(device->esn().isNull());
}

TEST_F(LoadedPlugin, esnLooksUpItsOffsetAfterTheExchange)
{
    class OrderBus : public FakeBus {
    public:
        explicit OrderBus(LogCapture& capture) : log(capture) {}
        BusData transact(BusData, QString, unsigned) override
        {
            linesBefore = static_cast<int>(log.texts().size());
            return {};
        }
        LogCapture& log;
        int linesBefore = -1;
    };
    OrderBus order(log);
    device->bus = &order;
    device->esn();
    EXPECT_EQ(order.linesBefore, 2);
    EXPECT_EQ(log.texts().size(), 3);
}
