#include "tests/mididata/Bytes.h"
#include "tests/mididata/ExtremeIntegers.h"

#include <gtest/gtest.h>

namespace {

const QString heading = QStringLiteral("      00 01 02 03 04 05 06 07   08 09 0A 0B 0C 0D 0E 0F\n"
                                       "\t ------------------------ - -----------------------\n");
const QString firstRow = QStringLiteral("000 | 00 01 02 03 04 05 06 07 - 08 09 0A 0B 0C 0D 0E 0F");

/** The table of `size` bytes 00, 01, 02, ... */
QString table(int size, int columns, int len = -1)
{
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
        bytes.append(static_cast<char>(i));
    return HxMidiData(bytes).toStringTable(len, columns);
}

} // namespace

TEST(DumpTable, ofNothingIsTheFirstLabel)
{
    EXPECT_EQ(table(0, 16), heading + text("000 | "));
    EXPECT_EQ(table(0, 4), text("000 | "));
    EXPECT_EQ(table(5, 4, 0), text("000 | "));
}

TEST(DumpTable, oneFullRowEndsWithItsLastDigit)
{
    EXPECT_EQ(table(16, 16), heading + firstRow);
    EXPECT_EQ(table(4, 4), text("000 | 00 01 02 03"));
    EXPECT_EQ(table(3, 4), text("000 | 00 01 02"));
    EXPECT_EQ(table(1, 1), text("000 | 00"));
}

TEST(DumpTable, aPartialLastRowIsFollowedByABlank)
{
    EXPECT_EQ(table(17, 16), heading + firstRow + text("\n010 | 10 "));
    EXPECT_EQ(table(5, 4), text("000 | 00 01 02 03\n004 | 04 "));
}

TEST(DumpTable, aFullLastRowIsFollowedByTheNextLabel)
{
    EXPECT_EQ(table(8, 4), text("000 | 00 01 02 03\n004 | 04 05 06 07\n008 | "));
    EXPECT_EQ(table(2, 1), text("000 | 00\n001 | 01\n002 | "));
}

TEST(DumpTable, theGapStandsBetweenTheEighthAndTheNinthByte)
{
    EXPECT_EQ(table(8, 16), heading + text("000 | 00 01 02 03 04 05 06 07"));
    EXPECT_EQ(table(9, 16), heading + text("000 | 00 01 02 03 04 05 06 07 - 08"));
    EXPECT_EQ(table(24, 16), heading + firstRow + text("\n010 | 10 11 12 13 14 15 16 17 "));
}

TEST(DumpTable, onlySixteenColumnsHaveHeadingAndGap)
{
    EXPECT_EQ(table(10, 17), text("000 | 00 01 02 03 04 05 06 07 08 09"));
    EXPECT_EQ(table(10, 15), text("000 | 00 01 02 03 04 05 06 07 08 09"));
}

TEST(DumpTable, fewerThanOneColumnIsEmpty)
{
    EXPECT_EQ(table(5, 0), QString());
    EXPECT_EQ(table(5, -1), QString());
    EXPECT_EQ(table(5, least), QString());
}

TEST(DumpTable, showsTheFirstBytesOnly)
{
    EXPECT_EQ(table(10, 4, 3), text("000 | 00 01 02"));
    EXPECT_EQ(table(3, 4, greatest), text("000 | 00 01 02"));
    EXPECT_EQ(table(3, 4, least), text("000 | 00 01 02"));
}

TEST(DumpTable, anyNumberOfColumnsIsARow)
{
    EXPECT_EQ(table(3, greatest), text("000 | 00 01 02"));
}

TEST(DumpTable, labelsGrowBeyondThreeDigits)
{
    const QString large = HxMidiData(QByteArray(0x10010, '\0')).toStringTable(-1, 16);
    EXPECT_TRUE(large.contains(text("\nFF0 | 00")));
    EXPECT_TRUE(large.contains(text("\n1000 | 00")));
    EXPECT_TRUE(large.contains(text("\nFFF0 | 00")));
    EXPECT_TRUE(large.endsWith(text("\n10010 | ")));
}
