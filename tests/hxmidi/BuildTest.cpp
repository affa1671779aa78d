// What is said about formats and arguments; the bytes of all fields are in the tables of
// docs/formats/builder-format.md, which GrammarTablesTest runs.
#include "tests/hxmidi/CommandRun.h"

#include <gtest/gtest.h>

TEST(Build, PrintsTheMessage)
{
    const CommandRun run = hxmidi({"build", "F0 7E V14 F7", "0x2345"});
    EXPECT_EQ(run.out, "F0 7E 46 45 F7\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.code, 0);
}

TEST(Build, PointsAtTheFieldWithoutAnArgument)
{
    const CommandRun run = hxmidi({"build", "F0 V14 CSTR F7", "1"});
    EXPECT_EQ(run.err, "error: there is no argument for \"CSTR\"\n"
                       "  F0 V14 CSTR F7\n"
                       "         ^~~~\n"
                       "  expected: one argument for every field of the format\n"
                       "  next: add the field's value after the others\n");
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.code, 2);
}

TEST(Build, PointsAtTheArgumentThatNoFieldTakes)
{
    EXPECT_EQ(hxmidi({"build", "F0 V8", "1", "23"}).err,
              "error: argument 2 is not used\n"
              "  23\n"
              "  ^~\n"
              "  expected: as many arguments as the format has fields, 1\n"
              "  next: take it away, or add a field to the format\n");
}

TEST(Build, SaysHowToWriteAHexArgument)
{
    EXPECT_EQ(
        hxmidi({"build", "V8", "7F"}).err,
        "error: \"7F\" is not a number for V8\n"
        "  7F\n"
        "  ^~\n"
        "  expected: a number from -2147483648 to 2147483647, decimal or after 0x hexadecimal\n"
        "  next: write 0x7F\n");
}

TEST(Build, ReadsDecimalWithLeadingZerosAsDecimal)
{
    EXPECT_EQ(hxmidi({"build", "V8", "010"}).out, "0A\n");
}

TEST(Build, RefusesWhatOnlyBeginsLikeANumber)
{
    for (const char* argument : {"", "1x", "0x", "--1", "+-1", " 1", "1 ", "1.0", "0x1G", "-0x-1"})
        EXPECT_EQ(hxmidi({"build", "V8", "--", argument}).code, 2) << argument;
}

TEST(Build, TakesEachFieldsWholeRange)
{
    EXPECT_EQ(hxmidi({"build", "NIB32", "4294967295"}).out, "0F 0F 0F 0F 0F 0F 0F 0F\n");
    EXPECT_EQ(hxmidi({"build", "NIB32", "-2147483648"}).out, "08 00 00 00 00 00 00 00\n");
    EXPECT_EQ(hxmidi({"build", "NIB32", "4294967296"}).code, 2);
    EXPECT_EQ(hxmidi({"build", "NIB32", "-2147483649"}).code, 2);
    EXPECT_EQ(hxmidi({"build", "V8", "2147483647"}).out, "7F FF FF FF\n");
    EXPECT_EQ(hxmidi({"build", "V8", "2147483648"}).code, 2);
    EXPECT_EQ(hxmidi({"build", "V8", "99999999999999999999"}).code, 2);
}

TEST(Build, WarnsOfBitsThatAreDropped)
{
    const CommandRun run = hxmidi({"build", "F0 nib24 F7", "0x1000001"});
    EXPECT_EQ(run.err, "warning: nib24 has 24 bits, so 0x1000001 becomes 1\n"
                       "  0x1000001\n"
                       "  ^~~~~~~~~\n"
                       "  next: give a smaller number, or use a wider field\n");
    EXPECT_EQ(run.out, "F0 00 00 00 00 00 01 F7\n");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(hxmidi({"build", "V14", "16384"}).firstComplaint(),
              "warning: V14 has 14 bits, so 16384 becomes 0");
    EXPECT_EQ(hxmidi({"build", "V14", "16383"}).err, "");
    EXPECT_EQ(hxmidi({"build", "UT", "4294967295"}).err, "");
}

TEST(Build, WarnsOfNumbersThatAreNoSingleByte)
{
    EXPECT_EQ(hxmidi({"build", "VV", "300"}).firstComplaint(),
              "warning: 300 gives 00 2C: of 256 to 65534 the high byte is lost");
    EXPECT_EQ(hxmidi({"build", "P8", "65535"}).firstComplaint(),
              "warning: 65535 gives 00 FF FF: it takes more than one byte");
    EXPECT_EQ(hxmidi({"build", "V8", "-1"}).firstComplaint(),
              "warning: -1 gives 00: a negative number gives one byte 00");
    EXPECT_EQ(hxmidi({"build", "V8", "255"}).err, "");
}

TEST(Build, RefusesATextWithoutBytesAndNamesTheTokenThatIsSkipped)
{
    const CommandRun run = hxmidi({"build", "F0 MSTR 11 F7", ""});
    EXPECT_EQ(run.err, "error: argument 1, for MSTR, gives no bytes, so HxMidiData skips the token "
                       "after it, \"11\"\n"
                       "  F0 MSTR 11 F7\n"
                       "     ^~~~\n"
                       "  expected: an argument with at least one byte\n"
                       "  next: give one, or take MSTR out of the format\n");
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(hxmidi({"build", "--lenient", "F0 MSTR 11 F7", ""}).out, "F0 F7\n");
}

TEST(Build, SkipsAnEmptyTokenAfterATextWithoutBytes)
{
    const CommandRun run = hxmidi({"build", "--lenient", "F0 CSTR  11 F7", ""});
    EXPECT_EQ(run.firstComplaint(), "warning: argument 1, for CSTR, gives no bytes");
    EXPECT_EQ(run.out, "F0 11 F7\n");
}

TEST(Build, WarnsOfTheArgumentThatASkippedFieldLeavesOver)
{
    const CommandRun run = hxmidi({"build", "--lenient", "CSTR V8 V8", "", "1", "2"});
    EXPECT_EQ(run.out, "01\n");
    EXPECT_NE(run.err.find("warning: argument 3 is not used\n"), std::string::npos) << run.err;
}

TEST(Build, PointsIntoAHexTextArgument)
{
    EXPECT_EQ(hxmidi({"build", "F0 MSTR F7", "41 4G"}).err,
              "error: \"4G\" is not a hex number\n"
              "  41 4G\n"
              "     ^~\n"
              "  expected: digits 0 to 9 and A to F\n"
              "  next: correct it; with --lenient it is left out, as HxMidiData does\n");
}

TEST(Build, TakesArgumentsInBracketsAsTheyAre)
{
    EXPECT_EQ(hxmidi({"build", "CSTR CSTR", "[A]", "{}"}).out, "5B 41 5D 7B 7D\n");
    EXPECT_EQ(hxmidi({"build", "CSTR", "\x01[A]"}).out, "01 5B 41 5D\n");
}

TEST(Build, BuildsNothingFromAnEmptyFormat)
{
    const CommandRun run = hxmidi({"build", ""});
    EXPECT_EQ(run.out, "\n");
    EXPECT_EQ(run.code, 0);
}

TEST(Build, NamesCommasAsTheReasonForABadToken)
{
    EXPECT_NE(hxmidi({"build", "F0,7E"}).err.find("next: separate with blanks, not with commas\n"),
              std::string::npos);
    EXPECT_NE(
        hxmidi({"build", "VX"})
            .err.find("next: write hex digits or one of the fields VV V8 P8 P14 V14 UT V32 I32 F32 "
                      "NIB24 NIB32 MSTR CSTR\n"),
        std::string::npos);
}

TEST(Build, GivesBytesAndSizeAsJson)
{
    const QJsonObject expected{{QStringLiteral("bytes"), QStringLiteral("F0 05 F7")},
                               {QStringLiteral("size"), 3}};
    EXPECT_EQ(hxmidi({"build", "--json", "F0 V8 F7", "5"}).json().value(QStringLiteral("result")),
              expected);
}
