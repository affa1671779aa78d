#include "tests/mididata/Bytes.h"
#include "tests/mididata/ExtremeIntegers.h"

#include <gtest/gtest.h>

TEST(Checksums, sumOfSectionIsModulo128)
{
    EXPECT_EQ(dataOf("F07F7F02").sumOfSection(1, -1), 0);
    EXPECT_EQ(dataOf("F0010203F7").sumOfSection(1, 3), 6);
    EXPECT_EQ(dataOf("8182").sumOfSection(0, -1), 3);
    EXPECT_EQ(dataOf("7F7F").sumOfSection(0, 2), 0x7E);
}

TEST(Checksums, sumOfSectionIsClippedToTheBuffer)
{
    const HxMidiData data = dataOf("01020304");
    EXPECT_EQ(data.sumOfSection(2, greatest), 7);
    EXPECT_EQ(data.sumOfSection(2, -5), 7);
    EXPECT_EQ(data.sumOfSection(4, -1), 0);
    EXPECT_EQ(data.sumOfSection(greatest, -1), 0);
    EXPECT_EQ(data.sumOfSection(0, 0), 0);
    EXPECT_EQ(data.sumOfSection(-1, 3), 3);
    EXPECT_EQ(data.sumOfSection(-2, -1), 10);
    EXPECT_EQ(data.sumOfSection(least, -1), 10);
    EXPECT_EQ(data.sumOfSection(least, greatest), 0);
    EXPECT_EQ(HxMidiData().sumOfSection(0, -1), 0);
}

TEST(Checksums, sum32AddsUnsignedBytes)
{
    EXPECT_EQ(dataOf("F00102F7").sum32(1, -1), 3u);
    EXPECT_EQ(dataOf("F00102F7").sum32(0, 4), 0xF0u + 3u + 0xF7u);
    EXPECT_EQ(dataOf("F00102F7").sum32(1, 2), 1u);
}

TEST(Checksums, sum32OfAnEndNotAboveThePositionIsZero)
{
    const HxMidiData data = dataOf("01020304");
    EXPECT_EQ(data.sum32(2, 2), 0u);
    EXPECT_EQ(data.sum32(3, 1), 0u);
    EXPECT_EQ(data.sum32(0, -4), 0u);
    EXPECT_EQ(data.sum32(0, least), 0u);
    EXPECT_EQ(data.sum32(0, 0), 0u);
}

TEST(Checksums, sum32AddsWhatExistsOfASectionThatRunsOut)
{
    const HxMidiData data = dataOf("01020304");
    EXPECT_EQ(data.sum32(2, greatest), 7u);
    EXPECT_EQ(data.sum32(9, greatest), 0u);
    EXPECT_EQ(data.sum32(static_cast<unsigned int>(greatest), greatest), 0u);
    EXPECT_EQ(data.sum32(0xFFFFFFFFu, 2), 3u); // compared as the signed number -1
    EXPECT_EQ(data.sum32(0x80000000u, greatest), 10u);
    EXPECT_EQ(HxMidiData().sum32(0, greatest), 0u);
}
