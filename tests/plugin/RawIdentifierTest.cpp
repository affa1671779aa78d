// The identifier word read from the product's memory.
#include "plugin/Identification.h"

#include "plugin/ValdrinBootInterface.h"
#include "tests/support/FakeBus.h"
#include "tests/support/LogCapture.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

namespace {

class RawIdentifier : public testing::Test {
protected:
    void SetUp() override { plugin.bus = &bus; }
    void TearDown() override { EXPECT_TRUE(log.onlyDefaultDebug()); }

    // A reply of `size` bytes that carries the block "00 01 02 ..." with these bytes at 8 and 9.
    static HxMidiData reply(int family, int model, int size = 48)
    {
        QByteArray bytes = QByteArray::fromHex("F0006B2D3041420D0F000102030405");
        for (int i = 0; i < 16; ++i) {
            const int value = i == 8 ? family : i == 9 ? model : i;
            bytes.append(static_cast<char>(value >> 4));
            bytes.append(static_cast<char>(value & 0x0F));
        }
        bytes.append('\xF7');
        bytes.resize(size);
        return HxMidiData(bytes);
    }

    unsigned readWithTemplate(const char* text)
    {
        plugin.protocolMap.insert("rawgender.read", QString(text));
        bus.replies = {reply(0x30, 0x41)};
        return hx::getRawFidPid(0x123456, &plugin);
    }

    ValdrinBootInterface plugin;
    FakeBus bus;
    LogCapture log;
};

const QByteArray commandFor123456 = QByteArray::fromHex("F0006B2D3041420D0F010203040506F7");

} // namespace

TEST_F(RawIdentifier, sendsTheAddressAsSixNibbles)
{
    bus.replies = {reply(0x30, 0x41)};
    EXPECT_EQ(hx::getRawFidPid(0x123456, &plugin), 0x300041U);
    ASSERT_EQ(bus.exchanges.size(), 1);
    EXPECT_EQ(bus.exchanges[0].command.bytes, commandFor123456);
    EXPECT_EQ(bus.exchanges[0].pattern, plugin.lookupStr("rawgender.read.response"));
    EXPECT_EQ(bus.exchanges[0].timeoutMs, 2200U);
}

TEST_F(RawIdentifier, logsAGoodReadInLowerCaseHex)
{
    bus.replies = {reply(0x30, 0x41), reply(0xAB, 0xCD)};
    hx::getRawFidPid(0, &plugin);
    EXPECT_EQ(hx::getRawFidPid(0, &plugin), 0xAB00CDU);
    EXPECT_EQ(log.texts(),
              (QStringList{"IOSUPORT: raw gender:  300041", "IOSUPORT: raw gender:  ab00cd"}));
}

TEST_F(RawIdentifier, needs48Bytes)
{
    bus.replies = {reply(0x30, 0x41, 47), reply(0x30, 0x41, 48), reply(0x30, 0x41, 49)};
    EXPECT_EQ(hx::getRawFidPid(0, &plugin), 0x7F007FU);
    EXPECT_TRUE(log.texts().isEmpty());
    EXPECT_EQ(hx::getRawFidPid(0, &plugin), 0x300041U);
    EXPECT_EQ(hx::getRawFidPid(0, &plugin), 0x300041U);
}

TEST_F(RawIdentifier, onlyThePairOfFFIsUnknown)
{
    bus.replies = {reply(0xFF, 0xFF), reply(0xFF, 0x41), reply(0x30, 0xFF)};
    EXPECT_EQ(hx::getRawFidPid(0, &plugin), 0x7F007FU);
    EXPECT_TRUE(log.texts().isEmpty());
    EXPECT_EQ(hx::getRawFidPid(0, &plugin), 0xFF0041U);
    EXPECT_EQ(hx::getRawFidPid(0, &plugin), 0x3000FFU);
}

TEST_F(RawIdentifier, onlyTheLowHalvesOfTheDataBytesCount)
{
    HxMidiData noisy = reply(0x30, 0x41);
    for (int i = 15; i < 47; ++i)
        noisy.bytes[i] = static_cast<char>(noisy.bytes.at(i) | 0x70);
    bus.replies = {noisy};
    EXPECT_EQ(hx::getRawFidPid(0, &plugin), 0x300041U);
}

TEST_F(RawIdentifier, isUnknownWithoutReplyBusOrDevice)
{
    EXPECT_EQ(hx::getRawFidPid(0, &plugin), 0x7F007FU);
    EXPECT_EQ(log.texts(), QStringList{"IOSUPORT:  \"ERROR F0006B2D3041420D0F000000000000F7 \""});
    plugin.bus = nullptr;
    EXPECT_EQ(hx::getRawFidPid(0, &plugin), 0x7F007FU);
    EXPECT_EQ(hx::getRawFidPid(0, nullptr), 0x7F007FU);
    EXPECT_EQ(bus.exchanges.size(), 1);
}

TEST_F(RawIdentifier, aSpacedTemplateIsUsedAsItIs)
{
    EXPECT_EQ(readWithTemplate("F0 00 6B 2D 30 41 42 0D 0F NIB24 F7"), 0x300041U);
    EXPECT_EQ(bus.exchanges[0].command.bytes, commandFor123456);
}

TEST_F(RawIdentifier, aCompactTemplateMayBeInLowerCase)
{
    EXPECT_EQ(readWithTemplate("f0006b2d3041420d0fnib24f7"), 0x300041U);
    EXPECT_EQ(bus.exchanges[0].command.bytes, commandFor123456);
}

TEST_F(RawIdentifier, templatesWhoseArgumentsWouldBeMissingAreNeverSent)
{
    for (const char* text : {"F0 00 CSTR F7", "F0 MSTR F7", "F0 F32 F7", "f0 cstr f7", "CSTR",
                             "F0 NIB24 NIB24 F7", "F0NIB24NIB24F7", "F0 V8 V14 F7"}) {
        EXPECT_EQ(readWithTemplate(text), 0x7F007FU) << text;
        EXPECT_TRUE(bus.exchanges.isEmpty()) << text;
    }
}

TEST_F(RawIdentifier, templatesThatTheBuilderCanReadAreSentAsItReadsThem)
{
    const QMap<QByteArray, QByteArray> commands = {
        {"F0 01 V32 F7", "F0010000486856F7"},
        {"F0 1 NIB24 F7", "F001010203040506F7"},
        {"F0 .. NIB24 F7", "F0010203040506F7"},
        {"F0 NIB32 F7", "F00000010203040506F7"},
        {"F0 V14 F7", "F06856F7"},
        {"F0 0 F7", "F000F7"},
        {"F0 G1 F7", "F0F7"},
        {"F0 F00 F7", "F00000F7"},
        {"plain words", ""},
        {"words", ""},
        {"F0,7E", ""},
        {"F0006BF", "0F0006BF"},
        {"F0..1NIB24F7", "F001010203040506F7"},
        {"UT", "0000486856"},
    };
    for (auto it = commands.begin(); it != commands.end(); ++it) {
        bus.exchanges.clear();
        EXPECT_EQ(readWithTemplate(it.key().constData()), 0x300041U) << it.key().constData();
        ASSERT_EQ(bus.exchanges.size(), 1) << it.key().constData();
        EXPECT_EQ(bus.exchanges[0].command.bytes, QByteArray::fromHex(it.value()))
            << it.key().constData();
    }
}

TEST_F(RawIdentifier, missingKeysSendAnEmptyCommand)
{
    plugin.protocolMap.remove("rawgender.read");
    plugin.protocolMap.remove("rawgender.read.response");
    EXPECT_EQ(hx::getRawFidPid(0, &plugin), 0x7F007FU);
    ASSERT_EQ(bus.exchanges.size(), 1);
    EXPECT_TRUE(bus.exchanges[0].command.bytes.isEmpty());
    EXPECT_EQ(log.texts(),
              (QStringList{"ERROR: Missing MIDI Protocol for key:  \"rawgender.read\"",
                           "ERROR: Missing MIDI Protocol for key:  \"rawgender.read.response\"",
                           "IOSUPORT:  \"ERROR  \""}));
}

TEST_F(RawIdentifier, theWholeReplyDoesNotFitTheDictionarysPattern)
{
    const QByteArray pattern = plugin.lookupStr("rawgender.read.response").toLatin1();
    EXPECT_FALSE(reply(0x30, 0x41).match(pattern.constData(), true));
}
