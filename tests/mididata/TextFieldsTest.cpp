#include "tests/mididata/Bytes.h"
#include "tests/mididata/ExtremeIntegers.h"
#include "tests/mididata/GiantBuffer.h"

#include <gtest/gtest.h>

namespace {

constexpr int longestPaddedText = 1048576;

QString zeros(int count)
{
    return QString(count, QChar(0));
}

} // namespace

TEST(TextFields, getStringWithLengthZeroLeavesOutTheLastByte)
{
    EXPECT_EQ(HxMidiData(QByteArray("0123456789")).getString(5, 0), QStringLiteral("5678"));
    EXPECT_EQ(HxMidiData(QByteArray("A")).getString(0, 0), QString());
    EXPECT_EQ(HxMidiData().getString(0, 0), QString());
}

TEST(TextFields, getStringMasksTheTopBit)
{
    EXPECT_EQ(dataOf("F0C1C2F7").getString(1, 2), QStringLiteral("AB"));
    EXPECT_EQ(dataOf("410042").getString(0, 3), QString(QLatin1String("A\0B", 3)));
}

TEST(TextFields, getStringWithAnEndNotAboveThePositionIsEmpty)
{
    const HxMidiData data(QByteArray("ABCD"));
    EXPECT_EQ(data.getString(3, 0), QString());
    EXPECT_EQ(data.getString(9, 0), QString());
    EXPECT_EQ(data.getString(1, -1), QString());
    EXPECT_EQ(data.getString(1, least), QString());
    EXPECT_EQ(data.getString(least, least), QString());
    EXPECT_EQ(data.getString(greatest, 0), QString());
}

TEST(TextFields, getStringReadsMissingBytesAsZeroCharacters)
{
    const HxMidiData data(QByteArray("ABCD"));
    EXPECT_EQ(data.getString(2, 4), QStringLiteral("CD") + zeros(2));
    EXPECT_EQ(data.getString(6, 2), zeros(2));
    EXPECT_EQ(data.getString(-2, 4), zeros(2) + QStringLiteral("AB"));
    EXPECT_EQ(data.getString(greatest, 2), zeros(2));
}

TEST(TextFields, getStringIsNeverLongerThanItsCapOrTheBuffer)
{
    const HxMidiData data(QByteArray("ABCD"));
    EXPECT_EQ(data.getString(2, greatest), QStringLiteral("CD") + zeros(longestPaddedText - 2));
    EXPECT_EQ(data.getString(greatest, greatest).size(), longestPaddedText);
    EXPECT_EQ(data.getString(least, greatest).size(), longestPaddedText);
    EXPECT_EQ(data.getString(least, 0).size(), longestPaddedText);
    const HxMidiData large(QByteArray(longestPaddedText + 5, 'A'));
    EXPECT_EQ(large.getString(0, greatest), QString(longestPaddedText + 5, QLatin1Char('A')));
}

TEST(TextFields, toAsciiStringIsLatin1WithZeroBytes)
{
    EXPECT_EQ(dataOf("F04100E9F7").toAsciiString(1, 3), QString(QLatin1String("A\0\xE9", 3)));
}

TEST(TextFields, toAsciiStringThatRunsPastTheEndIsEmpty)
{
    const HxMidiData data(QByteArray("ABCD"));
    EXPECT_EQ(data.toAsciiString(0, 4), QStringLiteral("ABCD"));
    EXPECT_EQ(data.toAsciiString(1, 4), QString());
    EXPECT_EQ(data.toAsciiString(1, greatest), QString());
    EXPECT_EQ(data.toAsciiString(greatest, greatest), QString());
    EXPECT_EQ(data.toAsciiString(5, 0), QString());
    EXPECT_EQ(data.toAsciiString(4, 0), QString());
}

TEST(TextFields, toAsciiStringFollowsTheRulesOfMid)
{
    const HxMidiData data(QByteArray("ABCD"));
    EXPECT_EQ(data.toAsciiString(1, -1), QStringLiteral("BCD"));
    EXPECT_EQ(data.toAsciiString(-1, 3), QStringLiteral("AB"));
    EXPECT_EQ(data.toAsciiString(least, least), QStringLiteral("ABCD"));
    EXPECT_EQ(data.toAsciiString(least, 2), QString());
}

TEST(TextFields, toAsciiStringOfAdoptedMemoryEndsWithIt)
{
    EXPECT_EQ(AdoptedBuffer(QByteArray("AB")).data.toAsciiString(0, 2), QStringLiteral("AB"));
}

TEST(TextFields, aTextLongerThanAQStringCanBeIsEmpty)
{
    const GiantBuffer giant;
    if (giant.data.bytes.isEmpty())
        GTEST_SKIP() << "1 GiB of address space is needed";
    EXPECT_EQ(giant.data.toAsciiString(0, GiantBuffer::size), QString());
    EXPECT_EQ(giant.data.toAsciiString(1, -1), QString());
    EXPECT_EQ(giant.data.toAsciiString(GiantBuffer::size - 2, 2), zeros(2));
    EXPECT_EQ(giant.data.getString(0, 0), QString());
    EXPECT_EQ(giant.data.getString(1, greatest), QString());
    EXPECT_EQ(giant.data.getString(GiantBuffer::size - 3, 0), zeros(2));
}
