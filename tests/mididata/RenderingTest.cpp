#include "tests/mididata/Bytes.h"
#include "tests/mididata/ExtremeIntegers.h"
#include "tests/mididata/GiantBuffer.h"

#include <gtest/gtest.h>

TEST(Rendering, compactHex)
{
    const HxMidiData data = dataOf("F07E");
    EXPECT_EQ(data.toString(-1), text("F07E"));
    EXPECT_EQ(data.toString(1), text("F0"));
    EXPECT_EQ(data.toString(2), text("F07E"));
    EXPECT_EQ(data.toString(greatest), text("F07E"));
    EXPECT_EQ(data.toString(least), text("F07E"));
    EXPECT_EQ(data.toString(0), QString());
}

TEST(Rendering, compactHexOfAllByteValues)
{
    QByteArray all;
    for (int value = 0; value < 256; ++value)
        all.append(static_cast<char>(value));
    EXPECT_EQ(HxMidiData(all).toString(-1), QString::fromLatin1(all.toHex()).toUpper());
}

TEST(Rendering, compactHexOfNothingIsNull)
{
    EXPECT_TRUE(HxMidiData().toString(-1).isNull());
}

TEST(Rendering, compactHexOfNoBytesOfABufferThatHasSomeIsEmptyAndNotNull)
{
    const QString none = dataOf("F07E").toString(0);
    EXPECT_TRUE(none.isEmpty());
    EXPECT_FALSE(none.isNull());
}

TEST(Rendering, fromTheEnd)
{
    const HxMidiData data = dataOf("F00102F7");
    EXPECT_EQ(data.toStringFromEnd(2), text("02F7"));
    EXPECT_EQ(data.toStringFromEnd(4), text("F00102F7"));
    EXPECT_EQ(data.toStringFromEnd(10), text("F00102F7"));
    EXPECT_EQ(data.toStringFromEnd(greatest), text("F00102F7"));
    EXPECT_EQ(data.toStringFromEnd(0), QString());
    EXPECT_EQ(data.toStringFromEnd(-1), QString());
    EXPECT_EQ(data.toStringFromEnd(least), QString());
    EXPECT_EQ(HxMidiData().toStringFromEnd(3), QString());
}

TEST(Rendering, separatorsStandBetweenNeighboursOnly)
{
    const HxMidiData data = dataOf("F07E7FF7");
    EXPECT_EQ(data.toString(':', -1), text("F0:7E:7F:F7"));
    EXPECT_EQ(data.toString(' ', 2), text("F0 7E"));
    EXPECT_EQ(data.toString(' ', 1), text("F0"));
    EXPECT_EQ(data.toString(' ', 0), QString());
    EXPECT_EQ(data.toString(' ', greatest), text("F0 7E 7F F7"));
    EXPECT_EQ(data.toString(' ', least), text("F0 7E 7F F7"));
    EXPECT_EQ(HxMidiData().toString(':', -1), QString());
}

TEST(Rendering, aSeparatorIsALatin1Character)
{
    EXPECT_EQ(dataOf("0102").toString('\xB7', -1), text("01\xB7"
                                                        "02"));
    EXPECT_EQ(dataOf("0102").toString('\0', -1), QString(QLatin1String("01\0"
                                                                       "02",
                                                                       5)));
}

TEST(Rendering, aSectionTakesItsEndAsACount)
{
    const HxMidiData data = dataOf("00010203040506070809");
    EXPECT_EQ(data.toString(' ', 2, 2), text("02 03 04 05"));
    EXPECT_EQ(data.toString(' ', 0, 3), text("00 01 02"));
    EXPECT_EQ(data.toString(' ', 8, 2), text("08 09"));
}

TEST(Rendering, aSectionThatStartsOutsideStartsAtTheBeginning)
{
    const HxMidiData data = dataOf("00010203040506070809");
    EXPECT_EQ(data.toString(' ', 12, 2), text("00 01"));
    EXPECT_EQ(data.toString(' ', 10, 2), text("00 01"));
    EXPECT_EQ(data.toString(' ', greatest, 2), text("00 01"));
    EXPECT_EQ(HxMidiData().toString(' ', 0, 2), QString());
}

TEST(Rendering, aSectionsSumsMayOverflowAnInt)
{
    const HxMidiData data = dataOf("00010203");
    EXPECT_EQ(data.toString(' ', 2, greatest), text("02 03"));
    EXPECT_EQ(data.toString(' ', least, least), text("00 01 02 03"));
    EXPECT_EQ(data.toString(' ', least, greatest), text("00 01 02 03"));
    EXPECT_EQ(data.toString(' ', -1, 4), text("00 01"));
    EXPECT_EQ(data.toString(' ', 2, -1), text("02"));
    EXPECT_EQ(data.toString(' ', 1, -2), text("01 02 03"));
    EXPECT_EQ(data.toString(' ', 1, -1), QString());
}

TEST(Rendering, decimal)
{
    EXPECT_EQ(dataOf("F07E7F").toStringDec(), text("240 126 127"));
    EXPECT_EQ(dataOf("00").toStringDec(), text("0"));
    EXPECT_EQ(dataOf("00090A63 64FF").toStringDec(), text("0 9 10 99 100 255"));
    EXPECT_EQ(HxMidiData().toStringDec(), QString());
}

TEST(Rendering, readsNothingBehindAdoptedMemory)
{
    const AdoptedBuffer adopted(hex("F07E"));
    EXPECT_EQ(adopted.data.toString(-1), text("F07E"));
    EXPECT_EQ(adopted.data.toString(' ', 0, 9), text("F0 7E"));
    EXPECT_EQ(adopted.data.toStringDec(), text("240 126"));
    EXPECT_EQ(adopted.data.toStringTable(-1, 4), text("000 | F0 7E"));
}

TEST(Rendering, aTextLongerThanAQStringCanBeIsEmpty)
{
    const GiantBuffer giant;
    if (giant.data.bytes.isEmpty())
        GTEST_SKIP() << "1 GiB of address space is needed";
    EXPECT_EQ(giant.data.toString(-1), QString());
    EXPECT_EQ(giant.data.toStringFromEnd(greatest), QString());
    EXPECT_EQ(giant.data.toString(':', -1), QString());
    EXPECT_EQ(giant.data.toString(':', 1, greatest), QString());
    EXPECT_EQ(giant.data.toStringDec(), QString());
    EXPECT_EQ(giant.data.toStringTable(-1, 16), QString());
    EXPECT_EQ(giant.data.toString(2), text("0000"));
}
