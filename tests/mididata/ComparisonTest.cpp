#include "tests/mididata/Bytes.h"

#include <gtest/gtest.h>

namespace {

/** Whether buffers of `size` bytes that differ by `difference` at `index` alone are the same. */
bool sameWith(int size, int index, int difference)
{
    HxMidiData a(QByteArray(size, '\x40'));
    HxMidiData b(a);
    b.bytes[index] = static_cast<char>(0x40 + difference);
    const bool same = a.isSame(b);
    EXPECT_EQ(b.isSame(a), same);
    return same;
}

/** How far the bytes at each index of a 700-byte buffer may differ; -1 for any distance. */
int toleranceAt(int index)
{
    if (index <= 9 || (index >= 26 && index <= 68) || (index >= 71 && index <= 75) ||
        (index >= 633 && index <= 647))
        return 0;
    if ((index >= 10 && index <= 13) || (index >= 17 && index <= 25))
        return 4;
    return -1;
}

} // namespace

TEST(Comparison, aDifferenceOfFourIsToleratedWhereTheTableSaysSo)
{
    EXPECT_TRUE(sameWith(30, 12, 4));
    EXPECT_FALSE(sameWith(30, 12, 5));
    EXPECT_TRUE(sameWith(30, 12, -4));
    EXPECT_FALSE(sameWith(30, 12, -5));
}

TEST(Comparison, whatIsNotComparedNeverMatters)
{
    EXPECT_TRUE(sameWith(30, 15, 50));
    EXPECT_TRUE(sameWith(80, 70, 50));
}

TEST(Comparison, index632IsNotComparedAnd633Is)
{
    EXPECT_TRUE(sameWith(700, 632, 50));
    EXPECT_FALSE(sameWith(700, 633, 1));
    EXPECT_FALSE(sameWith(700, 647, 1));
    EXPECT_TRUE(sameWith(700, 648, 50));
}

TEST(Comparison, everyIndexFollowsTheTable)
{
    for (int index = 0; index < 700; ++index) {
        const int tolerance = toleranceAt(index);
        for (const int difference : {1, 4, 5, 100}) {
            const bool same = tolerance < 0 || difference <= tolerance;
            EXPECT_EQ(sameWith(700, index, difference), same) << index << ' ' << difference;
        }
    }
}

TEST(Comparison, bytesAreComparedUnsigned)
{
    HxMidiData a(QByteArray(30, '\x7F'));
    HxMidiData b(a);
    b.bytes[12] = '\x81';
    EXPECT_TRUE(a.isSame(b));
    b.bytes[12] = '\xFF'; // -1 as a signed byte, 128 away as an unsigned one
    a.bytes[12] = '\x01';
    EXPECT_FALSE(a.isSame(b));
}

TEST(Comparison, sizesMustAgree)
{
    EXPECT_FALSE(dataOf("0102").isSame(dataOf("010203")));
    EXPECT_FALSE(dataOf("01").isSame(HxMidiData()));
    EXPECT_FALSE(HxMidiData().isSame(dataOf("01")));
    EXPECT_FALSE(HxMidiData(QByteArray(700, '\0')).isSame(HxMidiData(QByteArray(701, '\0'))));
}

TEST(Comparison, emptyBuffersAreTheSame)
{
    EXPECT_TRUE(HxMidiData().isSame(HxMidiData(QByteArray(""))));
}

TEST(Comparison, theOtherMembersDoNotMatter)
{
    HxMidiData a = dataOf("0102");
    HxMidiData b = dataOf("0102");
    b.auxA = b.auxB = b.auxC = 1;
    EXPECT_TRUE(a.isSame(b));
}
