#include "tests/hxmidi/CommandRun.h"

#include <gtest/gtest.h>

TEST(Dump, PrintsTheLibrarysTable)
{
    EXPECT_EQ(hxmidi({"dump", "000102030405060708090A0B0C0D0E0F10"}).out,
              "      00 01 02 03 04 05 06 07   08 09 0A 0B 0C 0D 0E 0F\n"
              "\t ------------------------ - -----------------------\n"
              "000 | 00 01 02 03 04 05 06 07 - 08 09 0A 0B 0C 0D 0E 0F\n"
              "010 | 10 \n");
}

TEST(Dump, TakesAnyNumberOfColumns)
{
    EXPECT_EQ(hxmidi({"dump", "--columns", "4", "0001020304050607"}).out,
              "000 | 00 01 02 03\n004 | 04 05 06 07\n008 | \n");
    EXPECT_EQ(hxmidi({"dump", "--columns", "100", "000102"}).out, "000 | 00 01 02\n");
    EXPECT_EQ(hxmidi({"dump", "--columns", "1", "00 01"}).out, "000 | 00\n001 | 01\n002 | \n");
}

TEST(Dump, RefusesColumnsBelowOne)
{
    EXPECT_EQ(hxmidi({"dump", "--columns", "0", "00"}).code, 2);
    EXPECT_EQ(hxmidi({"dump", "--columns", "-1", "00"}).code, 2);
    EXPECT_EQ(hxmidi({"dump", "--columns", "four", "00"}).code, 2);
}

TEST(Dump, ShowsTheFirstBytesOnly)
{
    EXPECT_EQ(hxmidi({"dump", "--length", "2", "--columns", "8", "00010203"}).out, "000 | 00 01\n");
    EXPECT_EQ(hxmidi({"dump", "--length", "0", "--columns", "8", "00010203"}).out, "000 | \n");
}
