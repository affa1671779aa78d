#include "host/product/MessageNames.h"

#include "tests/host/ImageSamples.h"
#include "tests/host/ProductSession.h"
#include "tests/host/StubPlugin.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

using namespace hx;

namespace {

QString nameOf(const char* hexText)
{
    ProductSession session;
    return MessageNames(session.device()).nameOf(QByteArray::fromHex(hexText));
}

} // namespace

TEST(MessageNames, KnowsEveryKeyOfTheDictionary)
{
    ProductSession session;
    EXPECT_EQ(knownKeys().size(), 43);
    for (const QString& key : knownKeys())
        EXPECT_TRUE(session.device().lookup(key).isValid()) << key.toStdString();
    EXPECT_TRUE(session.log.lines().isEmpty());
}

TEST(MessageNames, NamesCommands)
{
    EXPECT_EQ(nameOf("F07E7F0601F7"), "identify");
    EXPECT_EQ(nameOf("F0006B2D30411B0958F7"), "reset");
    EXPECT_EQ(nameOf("F0006B2D30412FF7"), "gender.read");
    EXPECT_EQ(nameOf("F0006B2D304130F7"), "version.read.user.crc");
    EXPECT_EQ(nameOf("F0006B2D304131F7"), "version.calc.user.crc");
    EXPECT_EQ(nameOf("F0006B2D3041420D0F0F0F0F0F0F00F7"), "rawgender.read");
    EXPECT_EQ(nameOf("F0006B2D30411C02F7"), "loader.set.boot");
}

TEST(MessageNames, NamesReplies)
{
    EXPECT_EQ(nameOf("F07E000602006B2D3000410031303233F7"), "identify.response");
    EXPECT_EQ(nameOf("F0006B2D3041305F507226F7"), "version.read.user.crc.response");
    EXPECT_EQ(nameOf("F0006B2D30412141424344454647 48F7"), "esn.read.response");
    EXPECT_EQ(nameOf("F0006B2D3041420802F7"), "id.dsp0.response.invalid");
    EXPECT_EQ(nameOf("F0006B2D30412E31303233F7"), "version.read.user.response");
    EXPECT_EQ(nameOf("F0006B2D30412E46F7"), "version.read.user.response");
}

TEST(MessageNames, NamesAcknowledgementsByStatusAndKind)
{
    EXPECT_EQ(nameOf("F0006B2D3041430C00F7"), "fwupdate.fwu.response.good");
    EXPECT_EQ(nameOf("F0006B2D3041430C01F7"), "fwupdate.fwu.response.bad");
    EXPECT_EQ(nameOf("F0006B2D3041430C02F7"), "fwupdate.fwu.response.failed");
    EXPECT_EQ(nameOf("F0006B2D3041430C03F7"), "fwupdate.fwu.response.any");
    EXPECT_EQ(nameOf("F0006B2D3041420C00F7"), "fwupdate.fwd.response.good");
}

TEST(MessageNames, NamesTheFileCheckByKind)
{
    ProductSession session;
    const MessageNames names(session.device());
    EXPECT_EQ(names.nameOf(samples::messages(10, CodeType::Fwu).at(1).bytes),
              "fwupdate.fwu.filecheck");
    EXPECT_EQ(names.nameOf(samples::messages(10, CodeType::Fwd).at(1).bytes),
              "fwupdate.fwd.filecheck");
}

TEST(MessageNames, NamesARefusalThatNoKeyDescribes)
{
    EXPECT_EQ(nameOf("F0006B2D30413046F7"), "nak");
}

TEST(MessageNames, NamesNothingElse)
{
    EXPECT_EQ(nameOf(""), "");
    EXPECT_EQ(nameOf("F0F7"), "");
    EXPECT_EQ(nameOf("904001"), "");
    EXPECT_EQ(nameOf("F0006B2D304130F700"), "");
}

// The acknowledgements of another product may end before the byte that tells the kinds apart.
TEST(MessageNames, LooksForNoKindInAShortAcknowledgement)
{
    StubPlugin plugin;
    plugin.texts["fwupdate.fwu.response.any"] = "F042..";
    EXPECT_EQ(MessageNames(plugin).nameOf(QByteArray::fromHex("F04200F7")),
              "fwupdate.fwu.response.any");
    plugin.texts["fwupdate.fwu.response.any"] = ".*";
    EXPECT_EQ(MessageNames(plugin).nameOf(QByteArray()), "fwupdate.fwu.response.any");
}
