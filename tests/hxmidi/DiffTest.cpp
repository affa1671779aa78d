#include "tests/hxmidi/CommandRun.h"

#include <QJsonArray>

#include <gtest/gtest.h>

TEST(Diff, ExitsWithZeroAndPrintsNothingWhenTheSame)
{
    const CommandRun run = hxmidi({"diff", "F0 01 F7", "F001F7"});
    EXPECT_EQ(run.out + run.err, "");
    EXPECT_EQ(run.code, 0);
}

TEST(Diff, ListsDifferingBytesInDecimal)
{
    const CommandRun run = hxmidi({"diff", "F0 42 01 F7", "F0 41 01 00"});
    EXPECT_EQ(run.out, "[1] 66!=65\n[3] 247!=0\n");
    EXPECT_EQ(run.code, 1);
}

TEST(Diff, CountsADifferentSizeAsADifference)
{
    EXPECT_EQ(hxmidi({"diff", "F0 42", "F0 41 F7"}).out, "Size Mismatch: 2 != 3\n[1] 66!=65\n");
    EXPECT_EQ(hxmidi({"diff", "F0", "F0 F7"}).code, 1);
    EXPECT_EQ(hxmidi({"diff", "", "F0 F7"}).out, "Size Mismatch: 0 != 2\n");
    EXPECT_EQ(hxmidi({"diff", "", ""}).code, 0);
}

TEST(Diff, ComparesTheRangeThatIsAskedFor)
{
    EXPECT_EQ(hxmidi({"diff", "--offset", "1", "--count", "2", "00010203", "FF01FF03"}).out,
              "[2] 2!=255\n");
    EXPECT_EQ(hxmidi({"diff", "--offset", "3", "00010203", "FFFFFF03"}).code, 0);
    EXPECT_EQ(hxmidi({"diff", "--offset", "4", "00010203", "FFFFFF03"}).code, 0);
    EXPECT_EQ(hxmidi({"diff", "--count", "1", "00010203", "00FFFFFF"}).code, 0);
}

TEST(Diff, RefusesARangeOutsideOfEither)
{
    const CommandRun run = hxmidi({"diff", "--offset", "2", "--count", "2", "000102", "00010203"});
    EXPECT_EQ(run.err, "error: the smaller of the two has only 3 bytes\n"
                       "  expected: an --offset and a --count within both\n"
                       "  next: correct them\n");
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(hxmidi({"diff", "--offset", "4", "000102", "00010203"}).code, 2);
}

TEST(Diff, ToleratesWhatTheDevicesDataMay)
{
    const std::string first(60, '0');
    std::string within = first;
    within.replace(24, 2, "04"); // byte 12 may differ by 4
    std::string beyond = first;
    beyond.replace(24, 2, "05");
    const CommandRun run = hxmidi({"diff", "--tolerant", first, within});
    EXPECT_EQ(run.out, "[12] 0!=4\n");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(hxmidi({"diff", first, within}).code, 1);
    EXPECT_EQ(hxmidi({"diff", "--tolerant", first, beyond}).code, 1);
}

TEST(Diff, GivesTheDifferencesAsJson)
{
    const QJsonObject expected{
        {QStringLiteral("same"), false},
        {QStringLiteral("firstSize"), 3},
        {QStringLiteral("secondSize"), 2},
        {QStringLiteral("differences"), QJsonArray{QJsonObject{{QStringLiteral("at"), 1},
                                                               {QStringLiteral("first"), 66},
                                                               {QStringLiteral("second"), 200}}}}};
    const CommandRun run = hxmidi({"diff", "--json", "F0 42 F7", "F0 C8"});
    EXPECT_EQ(run.json().value(QStringLiteral("result")), expected);
    EXPECT_EQ(run.code, 1);
}

TEST(Diff, WantsTwoBuffers)
{
    EXPECT_EQ(hxmidi({"diff", "F0"}).code, 2);
    EXPECT_EQ(hxmidi({"diff", "F0", "F0", "F0"}).code, 2);
}
