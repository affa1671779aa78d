// The identity exchange and the record parsed from its reply.
#include "plugin/Identification.h"

#include "plugin/ValdrinBootInterface.h"
#include "tests/plugin/LoadedPlugin.h"

namespace {

const HxMidiData goodReply("F0 7E 10 06 02 00 6B 2D 30 00 41 00 31 30 32 33 F7");

QString characters(std::initializer_list<char> codes)
{
    return QString(QLatin1String(codes.begin(), static_cast<int>(codes.size())));
}

} // namespace

TEST(HxIdentity, beginsWithItsResetValues)
{
    const HxIdentity identity;
    EXPECT_EQ(identity.deviceIdOffset, 2);
    EXPECT_EQ(identity.manufacturerIdOffset, 5);
    EXPECT_EQ(identity.manufacturerIdLength, 1);
    EXPECT_EQ(identity.familyOffset, 6);
    EXPECT_EQ(identity.modelOffset, 8);
    EXPECT_EQ(identity.versionOffset, 10);
    EXPECT_EQ(identity.tailOffset, 13);
    EXPECT_TRUE(identity.reply.bytes.isEmpty());
    EXPECT_EQ(identity.versionNumber, 0);
    EXPECT_TRUE(identity.versionText.isNull());
}

TEST(HxIdentity, aThreeByteManufacturerMovesWhatFollowsByTwo)
{
    HxIdentity identity;
    EXPECT_TRUE(identity.init(goodReply, 0));
    EXPECT_EQ(identity.deviceIdOffset, 2);
    EXPECT_EQ(identity.manufacturerIdOffset, 5);
    EXPECT_EQ(identity.manufacturerIdLength, 3);
    EXPECT_EQ(identity.familyOffset, 8);
    EXPECT_EQ(identity.modelOffset, 10);
    EXPECT_EQ(identity.versionOffset, 12);
    EXPECT_EQ(identity.tailOffset, 13);
    EXPECT_EQ(identity.reply.bytes, goodReply.bytes);
    EXPECT_EQ(identity.versionText, "1.0.2.3");
    EXPECT_EQ(identity.versionNumber, 1023);
}

TEST(HxIdentity, aOneByteManufacturerNeedsTheMakersBytesElsewhere)
{
    HxIdentity identity;
    EXPECT_TRUE(
        identity.init(HxMidiData("F0 7E 10 06 02 41 30 00 41 00 34 35 36 37 00 6B 2D F7"), 0));
    EXPECT_EQ(identity.manufacturerIdLength, 1);
    EXPECT_EQ(identity.familyOffset, 6);
    EXPECT_EQ(identity.modelOffset, 8);
    EXPECT_EQ(identity.versionOffset, 10);
    EXPECT_EQ(identity.versionNumber, 4567);
    EXPECT_FALSE(
        identity.init(HxMidiData("F0 7E 10 06 02 41 30 00 41 00 34 35 36 37 00 6B 2E F7"), 0));
}

TEST(HxIdentity, repliesUnder16BytesAreRefusedAfterTheReset)
{
    const QByteArray whole = goodReply.bytes;
    for (int size = 0; size < 16; ++size) {
        HxIdentity identity;
        ASSERT_TRUE(identity.init(goodReply, 0));
        EXPECT_FALSE(identity.init(HxMidiData(whole.left(size)), 0)) << size;
        EXPECT_EQ(identity.versionNumber, 0);
        EXPECT_TRUE(identity.versionText.isNull());
        EXPECT_TRUE(identity.reply.bytes.isEmpty());
        EXPECT_EQ(identity.versionOffset, 10);
    }
    HxIdentity identity;
    EXPECT_TRUE(identity.init(HxMidiData(whole.left(16)), 0));
}

TEST(HxIdentity, aReplyWithoutTheMakersBytesIsRefused)
{
    HxIdentity identity;
    EXPECT_FALSE(
        identity.init(HxMidiData("F0 7E 10 06 02 00 6B 2E 30 00 41 00 31 30 32 33 F7"), 0));
}

TEST(HxIdentity, aReplyThatIsNoIdentityReplyIsRefused)
{
    HxIdentity identity;
    EXPECT_FALSE(
        identity.init(HxMidiData("F0 7E 10 06 01 00 6B 2D 30 00 41 00 31 30 32 33 F7"), 0));
}

TEST(HxIdentity, makersBytesAndHeaderAreFoundAcrossByteBoundariesToo)
{
    HxIdentity identity;
    EXPECT_TRUE(identity.init(HxMidiData("0F 07 E1 00 60 20 06 B2 D0 31 32 33 34 00 00 00 00"), 0));
}

TEST(HxIdentity, charactersThatAreNoDigitsCountAsZero)
{
    HxIdentity identity;
    EXPECT_TRUE(identity.init(HxMidiData("F0 7E 10 06 02 00 6B 2D 30 00 41 00 41 31 32 33 F7"), 0));
    EXPECT_EQ(identity.versionText, "A.1.2.3");
    EXPECT_EQ(identity.versionNumber, 123);
}

TEST(HxIdentity, versionTextKeepsZeroAndHighBytesAsOneCharacterEach)
{
    HxIdentity identity;
    EXPECT_TRUE(identity.init(HxMidiData("F0 7E 10 06 02 00 6B 2D 30 00 41 00 00 B2 FF 39 F7"), 0));
    EXPECT_EQ(identity.versionText, characters({'\0', '.', '\xB2', '.', '\xFF', '.', '9'}));
    EXPECT_EQ(identity.versionText.size(), 7);
    EXPECT_EQ(identity.versionNumber, 9);
}

TEST(HxIdentity, aControlOtherThanZeroBlanksTheFirstVersionCharacter)
{
    HxIdentity identity;
    EXPECT_TRUE(identity.init(goodReply, 1));
    EXPECT_EQ(identity.versionText, characters({'\0', '.', '0', '.', '2', '.', '3'}));
    EXPECT_EQ(identity.versionNumber, 23);
}

TEST(HxIdentity, mayParseItsOwnReplyAgain)
{
    HxIdentity identity;
    ASSERT_TRUE(identity.init(goodReply, 0));
    EXPECT_TRUE(identity.init(identity.reply, 0));
    EXPECT_EQ(identity.versionNumber, 1023);
    EXPECT_EQ(identity.reply.bytes, goodReply.bytes);
}

TEST_F(LoadedPlugin, versionNumberRunsOneIdentityExchange)
{
    bus.replies = {goodReply};
    EXPECT_EQ(device->versionNumber(), 1023);
    ASSERT_EQ(bus.exchanges.size(), 1);
    EXPECT_EQ(bus.exchanges[0].command.bytes, QByteArray("\xF0\x7E\x7F\x06\x01\xF7"));
    EXPECT_EQ(bus.exchanges[0].pattern, "F0 7E .. 06 02 00 6B 2D 30 00 41 00 .. .. .. .. F7");
    EXPECT_EQ(bus.exchanges[0].timeoutMs, 25000U);
    EXPECT_TRUE(bus.exchanges[0].compiled);
    EXPECT_TRUE(log.texts().isEmpty());
}

TEST_F(LoadedPlugin, versionNumberIsZeroBeforeAnyReply)
{
    EXPECT_EQ(device->versionNumber(), 0);
}

TEST_F(LoadedPlugin, versionNumberAsksAgainEachTimeAndKeepsTheOldValueOnSilence)
{
    bus.replies = {goodReply, HxMidiData(),
                   HxMidiData("F0 7E 10 06 02 00 6B 2D 30 00 41 00 32 30 30 31 F7")};
    EXPECT_EQ(device->versionNumber(), 1023);
    EXPECT_EQ(device->versionNumber(), 1023);
    EXPECT_EQ(device->versionNumber(), 2001);
    EXPECT_EQ(bus.exchanges.size(), 3);
}

TEST_F(LoadedPlugin, aRefusedIdentityReplyResetsTheVersionNumber)
{
    bus.replies = {goodReply, HxMidiData("F0 7E 10 F7")};
    EXPECT_EQ(device->versionNumber(), 1023);
    EXPECT_EQ(device->versionNumber(), 0);
}

TEST(DoMidiIdent, leavesTheRecordAsItWasWithoutAReply)
{
    ValdrinBootInterface plugin;
    FakeBus bus;
    plugin.bus = &bus;
    bus.replies = {goodReply};
    plugin.doMidiIdent();
    EXPECT_EQ(plugin.identity.versionText, "1.0.2.3");
    plugin.doMidiIdent();
    EXPECT_EQ(plugin.identity.versionText, "1.0.2.3");
    EXPECT_EQ(plugin.identity.reply.bytes, goodReply.bytes);
}

#ifndef QT_NO_DEBUG
TEST(DoMidiIdentDeathTest, assertsItsBusInDebugBuilds)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    ValdrinBootInterface plugin;
    EXPECT_DEATH(plugin.doMidiIdent(), "bus");
    EXPECT_DEATH(plugin.esn(), "bus");
}
#endif
