#include "tests/hxmidi/CommandRun.h"

#include <gtest/gtest.h>

TEST(Sum, IsSevenBitsWide)
{
    EXPECT_EQ(hxmidi({"sum", "--start", "1", "F07F7F02"}).out, "00\n");
    EXPECT_EQ(hxmidi({"sum", "01 02"}).out, "03\n");
    EXPECT_EQ(hxmidi({"sum", "--kind", "7bit", "FF 01"}).out, "00\n");
}

TEST(Sum, CanBeComplemented)
{
    EXPECT_EQ(hxmidi({"sum", "--kind", "complement", "01 02"}).out, "7D\n");
    EXPECT_EQ(hxmidi({"sum", "--kind", "complement", "7F 01"}).out, "00\n");
}

TEST(Sum, CanBeOfWholeBytes)
{
    EXPECT_EQ(hxmidi({"sum", "--kind", "32bit", "--start", "1", "--end", "-1", "F00102F7"}).out,
              "00000003\n");
    EXPECT_EQ(hxmidi({"sum", "--kind", "32bit", "FFFF"}).out, "000001FE\n");
}

TEST(Sum, TakesASection)
{
    EXPECT_EQ(hxmidi({"sum", "--start", "1", "--end", "3", "01020408"}).out, "06\n");
    EXPECT_EQ(hxmidi({"sum", "--start", "1", "--end", "-1", "01020408"}).out, "06\n");
    EXPECT_EQ(hxmidi({"sum", "--start", "4", "01020408"}).out, "00\n");
    EXPECT_EQ(hxmidi({"sum", "--start", "2", "--end", "2", "01020408"}).out, "00\n");
    EXPECT_EQ(hxmidi({"sum", ""}).out, "00\n");
}

TEST(Sum, RefusesASectionOutsideOfTheData)
{
    EXPECT_EQ(hxmidi({"sum", "--start", "3", "--end", "2", "01020408"}).err,
              "error: the section from 3 up to 2 is not inside the data of 4 bytes\n"
              "  expected: a start and an end within the data\n"
              "  next: correct --start or --end; a negative end counts from the end\n");
    EXPECT_EQ(hxmidi({"sum", "--start", "5", "01020408"}).code, 2);
    EXPECT_EQ(hxmidi({"sum", "--end", "5", "01020408"}).code, 2);
    EXPECT_EQ(hxmidi({"sum", "--end", "-5", "01020408"}).code, 2);
    EXPECT_EQ(hxmidi({"sum", "--start", "-1", "01020408"}).code, 2);
}

TEST(Sum, GivesANumberAsJson)
{
    const QJsonObject expected{
        {QStringLiteral("sum"), 48}, {QStringLiteral("start"), 1}, {QStringLiteral("end"), 3}};
    EXPECT_EQ(hxmidi({"sum", "--json", "--start", "1", "--end", "-1", "F01020F7"})
                  .json()
                  .value(QStringLiteral("result")),
              expected);
}
