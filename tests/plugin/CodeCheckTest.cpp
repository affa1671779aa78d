// Refusals, and the code check with its deliberate comparison of whole reply fields.
#include "plugin/ValdrinBootInterface.h"
#include "tests/plugin/LoadedPlugin.h"

namespace {

const HxMidiData storedReply("F0 00 6B 2D 30 41 30 5F 50 72 26 F7");
const HxMidiData calculatedReply("F0 00 6B 2D 30 41 31 5F 50 72 26 F7");

} // namespace

TEST_F(LoadedPlugin, repliesUnderEightBytesAreRefusals)
{
    EXPECT_TRUE(device->isNak(HxMidiData()));
    for (int size = 1; size < 8; ++size)
        EXPECT_TRUE(device->isNak(HxMidiData(QByteArray(size, '\0')))) << size;
    EXPECT_FALSE(device->isNak(HxMidiData(QByteArray(8, '\0'))));
}

TEST_F(LoadedPlugin, a46AtPositionSevenIsARefusal)
{
    EXPECT_TRUE(device->isNak(HxMidiData("F0 00 6B 2D 30 41 2E 46 F7")));
    EXPECT_TRUE(device->isNak(HxMidiData("F0 00 6B 2D 30 41 2E 46")));
    EXPECT_FALSE(device->isNak(HxMidiData("F0 00 6B 2D 30 41 2E 00 00 00 00 F7")));
    EXPECT_FALSE(device->isNak(HxMidiData("F0 00 6B 2D 30 41 46 00 46 F7")));
    EXPECT_FALSE(device->isNak(HxMidiData("F0 00 6B 2D 30 41 2E C6 F7")));
}

TEST_F(LoadedPlugin, codeOfOtherKindsIsInvalidWithoutAnExchange)
{
    EXPECT_FALSE(device->isCodeValid(CodeType::Fwd));
    EXPECT_FALSE(device->isCodeValid(CodeType::Unknown));
    EXPECT_FALSE(device->isCodeValid(static_cast<CodeType>(77)));
    EXPECT_TRUE(bus.exchanges.isEmpty());
    EXPECT_TRUE(log.texts().isEmpty());
}

TEST_F(LoadedPlugin, codeCheckReadsTheStoredThenTheCalculatedChecksum)
{
    bus.replies = {storedReply, calculatedReply};
    device->isCodeValid(CodeType::Fwu);
    ASSERT_EQ(bus.exchanges.size(), 2);
    EXPECT_EQ(bus.exchanges[0].command.toString(-1), "F0006B2D304130F7");
    EXPECT_EQ(bus.exchanges[0].pattern, "F0 00 6B 2D 30 41 30");
    EXPECT_EQ(bus.exchanges[0].timeoutMs, 2200U);
    EXPECT_EQ(bus.exchanges[1].command.toString(-1), "F0006B2D304131F7");
    EXPECT_EQ(bus.exchanges[1].pattern, "F0 00 6B 2D 30 41 31");
    EXPECT_EQ(bus.exchanges[1].timeoutMs, 2200U);
    EXPECT_TRUE(log.texts().isEmpty());
}

// A plugin for another product is made by overriding the identifier: both bytes come from it.
TEST(CodeCheck, requestsAndPatternsCarryTheIdentifierInLowerCaseWithTwoDigits)
{
    class Other : public ValdrinBootInterface {
    public:
        quint32 fidpid() override { return 0x120B00FE; }
    };
    Other plugin;
    FakeBus bus;
    plugin.bus = &bus;
    const LogCapture log;
    EXPECT_FALSE(plugin.isCodeValid(CodeType::Fwu));
    ASSERT_EQ(bus.exchanges.size(), 2);
    EXPECT_EQ(bus.exchanges[0].command.toString(-1), "F0006B2D0BFE30F7");
    EXPECT_EQ(bus.exchanges[0].pattern, "F0 00 6B 2D 0b fe 30");
    EXPECT_EQ(bus.exchanges[1].command.toString(-1), "F0006B2D0BFE31F7");
    EXPECT_EQ(bus.exchanges[1].pattern, "F0 00 6B 2D 0b fe 31");
}

TEST(CodeCheck, readsItsTimeoutAsAnIntegerForEveryKind)
{
    class Recorder : public ValdrinBootInterface {
    public:
        int lookupInt(QString key) const override
        {
            keys += key;
            return 4711;
        }
        mutable QStringList keys;
    };
    Recorder plugin;
    FakeBus bus;
    plugin.bus = &bus;
    const LogCapture log;
    EXPECT_FALSE(plugin.isCodeValid(CodeType::Fwd));
    EXPECT_FALSE(plugin.isCodeValid(CodeType::Unknown));
    EXPECT_EQ(plugin.keys, (QStringList{"command.timeout.ms", "command.timeout.ms"}));
    EXPECT_FALSE(plugin.isCodeValid(CodeType::Fwu));
    EXPECT_EQ(plugin.keys.size(), 3);
    ASSERT_EQ(bus.exchanges.size(), 2);
    EXPECT_EQ(bus.exchanges[0].timeoutMs, 4711U);
    EXPECT_EQ(bus.exchanges[1].timeoutMs, 4711U);
}

TEST_F(LoadedPlugin, equalChecksumsCompareAsDifferent)
{
    bus.replies = {storedReply, calculatedReply};
    EXPECT_FALSE(device->isCodeValid(CodeType::Fwu));
}

TEST_F(LoadedPlugin, twoMissingRepliesCompareAsDifferentAndAreLogged)
{
    bus.errorText = QStringLiteral("silence");
    EXPECT_FALSE(device->isCodeValid(CodeType::Fwu));
    EXPECT_EQ(log.texts(), (QStringList{"IOSUPORT:  \"silence\"", "IOSUPORT:  \"silence\""}));
}

TEST_F(LoadedPlugin, aStoredOneAndAMissingCalculatedReplyCompareAsEqual)
{
    bus.replies = {HxMidiData("F0 00 6B 2D 30 41 30 00 00 00 01 F7")};
    EXPECT_TRUE(device->isCodeValid(CodeType::Fwu));
}

TEST_F(LoadedPlugin, aMissingStoredReplyDiffersFromACalculatedChecksumOfZero)
{
    bus.replies = {HxMidiData(), HxMidiData("F0 00 6B 2D 30 41 31 00 00 00 00 F7")};
    EXPECT_FALSE(device->isCodeValid(CodeType::Fwu));
    EXPECT_EQ(bus.exchanges.size(), 2);
}

// The echoed 31 adds 0x10000000, and a byte of 80 behind it takes just as much away.
TEST_F(LoadedPlugin, aMissingStoredReplyEqualsACalculatedFieldOfZero)
{
    bus.replies = {HxMidiData(), HxMidiData("F0 00 6B 2D 30 41 31 80 00 00 00 F7")};
    EXPECT_TRUE(device->isCodeValid(CodeType::Fwu));
}

// The low four bits of the echoed command byte are all that reaches bits 28 to 31.
TEST_F(LoadedPlugin, wholeFieldsThatAreEqualCompareAsEqual)
{
    bus.replies = {storedReply, storedReply};
    EXPECT_TRUE(device->isCodeValid(CodeType::Fwu));
    bus.replies = {storedReply, HxMidiData("F0 00 6B 2D 30 41 40 5F 50 72 26 F7")};
    EXPECT_TRUE(device->isCodeValid(CodeType::Fwu));
}

TEST_F(LoadedPlugin, repliesOf11Or13BytesCountAsMissing)
{
    const HxMidiData eleven("F0 00 6B 2D 30 41 30 00 00 01 F7");
    const HxMidiData thirteen("F0 00 6B 2D 30 41 30 00 00 00 00 01 F7");
    const HxMidiData storedOne("F0 00 6B 2D 30 41 30 00 00 00 01 F7");
    for (const HxMidiData& odd : {eleven, thirteen}) {
        bus.replies = {storedOne, odd};
        EXPECT_TRUE(device->isCodeValid(CodeType::Fwu)); // 1 and the missing side's 1
        bus.replies = {odd, HxMidiData("F0 00 6B 2D 30 41 30 00 00 00 00 F7")};
        EXPECT_TRUE(device->isCodeValid(CodeType::Fwu)); // the missing side's 0 and 0
    }
}

TEST_F(LoadedPlugin, checksumBytesOf80AndAboveAreReadSigned)
{
    bus.replies = {HxMidiData("F0 00 6B 2D 30 41 30 00 00 01 80 F7"),
                   HxMidiData("F0 00 6B 2D 30 41 30 00 00 00 00 F7")};
    EXPECT_TRUE(device->isCodeValid(CodeType::Fwu)); // 1 * 128 - 128 is 0
}

TEST_F(LoadedPlugin, codeCheckWithoutABusIsFalseAndLogsBothCommands)
{
    device->bus = nullptr;
    EXPECT_FALSE(device->isCodeValid(CodeType::Fwu));
    EXPECT_EQ(log.texts(),
              (QStringList{"IOSUPORT:  The bus() is invalid, command F0006B2D304130F7 failed",
                           "IOSUPORT:  The bus() is invalid, command F0006B2D304131F7 failed"}));
}

TEST_F(LoadedPlugin, codeCheckRecordsNoErrorText)
{
    device->isCodeValid(CodeType::Fwu);
    EXPECT_TRUE(device->lastError.isEmpty());
}
