#include "tests/mididata/Bytes.h"
#include "tests/mididata/ExtremeIntegers.h"

#include <gtest/gtest.h>

namespace {

QStringList difference(const char* mine, const char* other, int count, int offset)
{
    return dataOf(mine).diff(dataOf(other), count, offset);
}

using Map = QMap<unsigned int, unsigned char>;

Map mapped(const char* mine, const char* other, int offset, int count)
{
    return dataOf(mine).diffToMap(dataOf(other), {offset, count});
}

QStringList lines(std::initializer_list<const char*> texts)
{
    QStringList all;
    for (const char* text : texts)
        all += QString::fromLatin1(text);
    return all;
}

} // namespace

TEST(Difference, aLineNamesIndexAndBothBytesInDecimal)
{
    EXPECT_EQ(difference("0000000000000042", "0000000000000041", -1, -1), lines({"[7] 66!=65"}));
    EXPECT_EQ(difference("FF00", "0080", -1, -1), lines({"[0] 255!=0", "[1] 0!=128"}));
}

TEST(Difference, aCountAboveZeroReportsDifferentSizes)
{
    EXPECT_EQ(difference("0102030405", "010203040506", -1, -1), QStringList());
    EXPECT_EQ(difference("0102030405", "010203040506", 0, -1), QStringList());
    EXPECT_EQ(difference("0102030405", "FF02FF0406FF", 3, -1),
              lines({"Size Mismatch: 5 != 6", "[0] 1!=255", "[2] 3!=255"}));
}

TEST(Difference, theRangeIsCountFromOffset)
{
    const char* const mine = "0000000000";
    const char* const other = "0101010101";
    EXPECT_EQ(difference(mine, other, 2, 0), lines({"[0] 0!=1", "[1] 0!=1"}));
    EXPECT_EQ(difference(mine, other, 2, -7), lines({"[0] 0!=1", "[1] 0!=1"}));
    EXPECT_EQ(difference(mine, other, 2, 3), lines({"[3] 0!=1", "[4] 0!=1"}));
    EXPECT_EQ(difference(mine, other, 5, 0).size(), 5);
}

TEST(Difference, aRangeThatDoesNotFitBecomesTheWhole)
{
    const char* const mine = "0000000000";
    const char* const other = "0101010101";
    EXPECT_EQ(difference(mine, other, 2, 4).size(), 5);
    EXPECT_EQ(difference(mine, other, 6, 0).size(), 5);
    EXPECT_EQ(difference(mine, other, 2, greatest).size(), 5);
    EXPECT_EQ(difference(mine, other, greatest, greatest).size(), 5);
    EXPECT_EQ(difference(mine, other, 2, least).size(), 2);
    EXPECT_EQ(difference(mine, other, least, least).size(), 5);
}

TEST(Difference, theOffsetCountsOnlyWithACount)
{
    EXPECT_EQ(difference("0000", "0101", -1, 1).size(), 2);
    EXPECT_EQ(difference("0000", "0101", 0, 1).size(), 2);
}

TEST(Difference, emptyBuffersDoNotDiffer)
{
    EXPECT_EQ(difference("", "", 3, 0), QStringList());
    EXPECT_EQ(difference("", "01", 3, 0), lines({"Size Mismatch: 0 != 1"}));
    EXPECT_EQ(difference("01", "", -1, 0), QStringList());
}

TEST(Difference, againstRawBytesTheSizeIsNotReported)
{
    EXPECT_EQ(dataOf("010203").diff("\x01\xFF", 2), lines({"[1] 2!=255"}));
    EXPECT_EQ(dataOf("41").diff("F0", 2), lines({"[0] 65!=70"})); // not hex text
}

TEST(Difference, againstANullPointer)
{
    EXPECT_EQ(dataOf("01").diff(nullptr, 2), lines({"Invalid Arg"}));
    EXPECT_EQ(HxMidiData().diff(nullptr, 0), lines({"Invalid Arg"}));
}

TEST(Difference, againstANegativeLength)
{
    EXPECT_EQ(dataOf("01").diff("\x02", -1), QStringList());
    EXPECT_EQ(dataOf("01").diff("\x02", least), QStringList());
    EXPECT_EQ(dataOf("01").diff("\x02", 0), QStringList());
}

TEST(DifferenceMap, holdsTheOtherByteAtEachDifference)
{
    EXPECT_EQ(mapped("010203", "01FF04", 0, -1), Map({{1, 0xFF}, {2, 0x04}}));
    EXPECT_EQ(mapped("010203", "0102", 0, -1), Map());
    EXPECT_EQ(mapped("0102", "0102FF", 0, -1), Map());
}

TEST(DifferenceMap, againstAnEmptyBufferEveryIndexIsZero)
{
    EXPECT_EQ(mapped("0A0B", "", 0, -1), Map({{0, 0}, {1, 0}}));
    EXPECT_EQ(mapped("0A0B", "", 1, 1), Map({{0, 0}, {1, 0}}));
    EXPECT_EQ(mapped("", "", 0, -1), Map());
    EXPECT_EQ(mapped("", "01", 0, -1), Map());
}

TEST(DifferenceMap, theRangeIsOffsetThenCount)
{
    const char* const mine = "0000000000";
    const char* const other = "0102030405";
    EXPECT_EQ(mapped(mine, other, 1, 2), Map({{1, 2}, {2, 3}}));
    EXPECT_EQ(mapped(mine, other, 0, 2), Map({{0, 1}, {1, 2}}));
    EXPECT_EQ(mapped(mine, other, 3, -1), Map({{3, 4}, {4, 5}}));
    EXPECT_EQ(mapped(mine, other, 0, 0), Map());
}

TEST(DifferenceMap, anOffsetThatDoesNotFitLeavesTheCountAsTheEnd)
{
    const char* const mine = "0000000000";
    const char* const other = "0102030405";
    EXPECT_EQ(mapped(mine, other, 3, 3), Map());
    EXPECT_EQ(mapped(mine, other, 2, 4), Map({{2, 3}, {3, 4}}));
}

TEST(DifferenceMap, whatLiesOutsideIsLeftOut)
{
    const char* const mine = "0000";
    const char* const other = "0102";
    const Map all({{0, 1}, {1, 2}});
    EXPECT_EQ(mapped(mine, other, 0, 100), all);
    EXPECT_EQ(mapped(mine, other, -5, -1), all);
    EXPECT_EQ(mapped(mine, other, least, greatest), all);
    EXPECT_EQ(mapped(mine, other, greatest, greatest), Map());
    EXPECT_EQ(mapped(mine, other, 0, -2), Map());
    EXPECT_EQ(mapped(mine, other, least, least), Map());
    EXPECT_EQ(mapped(mine, other, 2, -1), Map());
}
