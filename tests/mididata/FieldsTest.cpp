#include "tests/mididata/Bytes.h"
#include "tests/mididata/ExtremeIntegers.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(Fields, get14bitAddsSignedBytes)
{
    EXPECT_EQ(dataOf("057F").get14bit(0, -7), 767);
    EXPECT_EQ(dataOf("8101").get14bit(0, -7), -16255);
    EXPECT_EQ(dataOf("0080").get14bit(0, -7), -128);
}

TEST(Fields, get14bitReadsAMissingByteAsZero)
{
    const HxMidiData data = dataOf("057F");
    EXPECT_EQ(data.get14bit(1, -7), 16256);
    EXPECT_EQ(data.get14bit(2, -7), 0);
    EXPECT_EQ(data.get14bit(3, -7), -7);
    EXPECT_EQ(data.get14bit(greatest, -7), -7);
    EXPECT_EQ(data.get14bit(-1, -7), 5);
    EXPECT_EQ(data.get14bit(-2, -7), 0);
    EXPECT_EQ(data.get14bit(least, -7), 0);
    EXPECT_EQ(HxMidiData().get14bit(0, -7), 0);
}

TEST(Fields, get14bitReadsNothingBehindAdoptedMemory)
{
    const AdoptedBuffer adopted(hex("057F"));
    EXPECT_EQ(adopted.data.get14bit(1, -7), 16256);
    EXPECT_EQ(adopted.data.get14bit(2, -7), 0);
}

TEST(Fields, getUtimeMasksAllButTheFirstByte)
{
    EXPECT_EQ(dataOf("0F7F7F7F7F").getUtime(0, 3), 0xFFFFFFFFu);
    EXPECT_EQ(dataOf("FF7F7F7F7F").getUtime(0, 3), 0xFFFFFFFFu);
    EXPECT_EQ(dataOf("0000000080").getUtime(0, 3), 0u);
    EXPECT_EQ(dataOf("F00111512C78").getUtime(1, 3), 0x12345678u);
}

TEST(Fields, get32bitAddsSignedBytes)
{
    EXPECT_EQ(dataOf("0000000080").get32bit(0, 3), static_cast<int>(0xFFFFFF80u));
    EXPECT_EQ(dataOf("0080000000").get32bit(0, 3), -128 * (1 << 21));
    EXPECT_EQ(dataOf("0111512C78").get32bit(0, 3), 0x12345678);
    EXPECT_EQ(dataOf("FF00000000").get32bit(0, 3), static_cast<int>(0xF0000000u));
}

TEST(Fields, get32bitLEReadsTheLeastSignificantGroupFirst)
{
    EXPECT_EQ(dataOf("0100000000").get32bitLE(0, 3), 1);
    EXPECT_EQ(dataOf("0000000001").get32bitLE(0, 3), 0x10000000);
    EXPECT_EQ(dataOf("8000000000").get32bitLE(0, 3), -128);
    EXPECT_EQ(dataOf("AA782C511101").get32bitLE(1, 3), 0x12345678);
}

TEST(Fields, getFloat32ReadsTheBits)
{
    EXPECT_EQ(dataOf("037C000000").getFloat32(0, 9.5f), 1.0f);
    EXPECT_TRUE(std::isnan(dataOf("0F7F7F7F7F").getFloat32(0, 9.5f)));
}

TEST(Fields, fiveByteFieldsThatDoNotFitGiveTheFallback)
{
    const HxMidiData data = dataOf("010203040506");
    EXPECT_EQ(data.getUtime(1, 3), data.getUtime(1, 4));
    for (const int pos : {2, 6, greatest, -1, least}) {
        EXPECT_EQ(data.getUtime(pos, -3), static_cast<unsigned int>(-3)) << pos;
        EXPECT_EQ(data.getFloat32(pos, 9.5f), 9.5f) << pos;
        EXPECT_EQ(data.get32bit(pos, -3), -3) << pos;
        EXPECT_EQ(data.get32bitLE(pos, -3), -3) << pos;
    }
}

TEST(Fields, toIntMixesGroupsAndWholeBytes)
{
    EXPECT_EQ(dataOf("FF").toInt(0, 1, 9), -1);
    EXPECT_EQ(dataOf("0100").toInt(0, 2, 9), 128);
    EXPECT_EQ(dataOf("010000").toInt(0, 3, 9), 65536);
    EXPECT_EQ(dataOf("01000000").toInt(0, 4, 9), 16777216);
}

TEST(Fields, toIntReadsAllButTheFirstOfFourBytesSigned)
{
    EXPECT_EQ(dataOf("0080").toInt(0, 2, 9), -128);
    EXPECT_EQ(dataOf("8000").toInt(0, 2, 9), -16384);
    EXPECT_EQ(dataOf("0000FF").toInt(0, 3, 9), -1);
    EXPECT_EQ(dataOf("00FF00").toInt(0, 3, 9), -256);
    EXPECT_EQ(dataOf("000000FF").toInt(0, 4, 9), -1);
    EXPECT_EQ(dataOf("FF000000").toInt(0, 4, 9), static_cast<int>(0xFF000000u));
    EXPECT_EQ(dataOf("80800000").toInt(0, 4, 9), static_cast<int>(0x7F800000u));
}

TEST(Fields, toIntGivesTheFallbackForWhatDoesNotFit)
{
    const HxMidiData data = dataOf("0102030405");
    EXPECT_EQ(data.toInt(0, 5, 9), 9);
    EXPECT_EQ(data.toInt(0, 0, 9), 9);
    EXPECT_EQ(data.toInt(0, -1, 9), 9);
    EXPECT_EQ(data.toInt(0, least, 9), 9);
    EXPECT_EQ(data.toInt(4, 2, 9), 9);
    EXPECT_EQ(data.toInt(5, 1, 9), 9);
    EXPECT_EQ(data.toInt(-1, 1, 9), 9);
    EXPECT_EQ(data.toInt(least, 4, 9), 9);
    EXPECT_EQ(data.toInt(greatest, 4, 9), 9);
}

TEST(Fields, set14bitWritesTwoGroups)
{
    HxMidiData data = dataOf("F00000F7");
    EXPECT_TRUE(data.set14bit(1, 0x2345));
    EXPECT_EQ(data.bytes, hex("F04645F7"));
    EXPECT_TRUE(data.set14bit(0, -1));
    EXPECT_EQ(data.bytes, hex("7F7F45F7"));
}

TEST(Fields, set14bitAtTheLastByteGrowsTheBuffer)
{
    HxMidiData data = dataOf("F000");
    EXPECT_TRUE(data.set14bit(1, 0x3FFF));
    EXPECT_EQ(data.bytes, hex("F07F7F"));
}

TEST(Fields, set14bitOutsideChangesNothing)
{
    for (const int pos : {2, 3, greatest, -1, least}) {
        HxMidiData data = dataOf("F000");
        EXPECT_FALSE(data.set14bit(pos, 0x3FFF)) << pos;
        EXPECT_EQ(data.bytes, hex("F000")) << pos;
    }
    HxMidiData empty;
    EXPECT_FALSE(empty.set14bit(0, 1));
}
