// What is said about hex text that is wrong or surprising; the bytes of all kinds of text are in
// the tables of docs/formats/hex-text.md, which GrammarTablesTest runs.
#include "tests/hxmidi/CommandRun.h"

#include <gtest/gtest.h>

TEST(HexText, PointsAtThePieceThatIsNoNumber)
{
    const CommandRun run = hxmidi({"convert", "F0", "7E", "7G", "F7"});
    EXPECT_EQ(run.err, "error: \"7G\" is not a hex number\n"
                       "  F0 7E 7G F7\n"
                       "        ^~\n"
                       "  expected: digits 0 to 9 and A to F\n"
                       "  next: correct it; with --lenient it is left out, as HxMidiData does\n");
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.code, 2);
}

TEST(HexText, PointsAtAPairThatABlankSeparates)
{
    EXPECT_EQ(hxmidi({"convert", "F 0G 7"}).err,
              "error: \"G7\" is not a hex number\n"
              "  F 0G 7\n"
              "     ^~~\n"
              "  expected: digits 0 to 9 and A to F\n"
              "  next: correct it; with --lenient it is left out, as HxMidiData does\n");
}

TEST(HexText, PointsAtTheWordWithOddDigits)
{
    EXPECT_EQ(hxmidi({"convert", "F0 7E7 F7"}).err,
              "error: 7 digits do not make pairs, so nothing is read\n"
              "  F0 7E7 F7\n"
              "     ^~~\n"
              "  expected: two digits a byte\n"
              "  next: complete the pair; with --tokens each word is a number by itself\n");
}

TEST(HexText, SaysThatMinusOneEndsTheText)
{
    const CommandRun run = hxmidi({"convert", "--lenient", "10,-1,ZZ"});
    EXPECT_EQ(run.err,
              "warning: \"-1\" has no bytes\n"
              "  10,-1,ZZ\n"
              "     ^~\n"
              "  expected: a number other than -1 (all bits set)\n"
              "  next: correct it; with --lenient the text ends here, as for HxMidiData\n");
    EXPECT_EQ(run.out, "10\n");
}

TEST(HexText, AdvisesCommasBetweenPrefixedNumbers)
{
    EXPECT_EQ(hxmidi({"convert", "0xF0 0x7E"}).err,
              "error: \"0xF00x7E\" is not a hex number\n"
              "  0xF0 0x7E\n"
              "  ^~~~~~~~~\n"
              "  expected: digits 0 to 9 and A to F\n"
              "  next: put commas between numbers that begin with 0x, or give --tokens\n");
    EXPECT_EQ(hxmidi({"convert", "0xF0, 0x7E"}).out, "F0 7E\n");
    EXPECT_EQ(hxmidi({"convert", "--tokens", "0xF0 0x7E"}).out, "F0 7E\n");
}

TEST(HexText, TellsWildcardsAndFieldsApartFromTypingErrors)
{
    EXPECT_NE(hxmidi({"convert", "F0 xx F7"}).err.find("next: wildcards belong to patterns"),
              std::string::npos);
    EXPECT_NE(hxmidi({"convert", "F0,V14"}).err.find("next: fields belong to builder formats"),
              std::string::npos);
}

struct Surprise {
    const char* text;
    const char* warning;
    const char* next;
};

void PrintTo(const Surprise& surprise, std::ostream* out)
{
    *out << '"' << surprise.text << '"';
}

class HexTextSurprise : public testing::TestWithParam<Surprise> {};

TEST_P(HexTextSurprise, IsWarnedOf)
{
    const CommandRun run = hxmidi({"convert", "--tokens", GetParam().text});
    EXPECT_EQ(run.firstComplaint(), std::string("warning: ") + GetParam().warning);
    EXPECT_NE(run.err.find(std::string("  next: write the bytes one by one: ") + GetParam().next),
              std::string::npos)
        << run.err;
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(hxmidi({"convert", "--strict", "--tokens", GetParam().text}).code, 2);
}

INSTANTIATE_TEST_SUITE_P(
    HexText, HexTextSurprise,
    testing::Values(
        Surprise{"0x100", "\"0x100\" gives 00 00: of 0x100 to 0xFFFE the high byte is lost",
                 "01 00\n"},
        Surprise{"00 FFFE", "\"FFFE\" gives 00 FE: of 0x100 to 0xFFFE the high byte is lost",
                 "FF FE\n"},
        Surprise{"00 FFFF", "\"FFFF\" gives 00 FF FF: numbers from 0xFFFF on take three bytes",
                 "FF FF\n"},
        Surprise{"00 FFFFFF",
                 "\"FFFFFF\" gives 00 FF FF FF: numbers from 0xFFFFFF on take four bytes",
                 "FF FF FF\n"},
        Surprise{"00 007F", "\"007F\" gives 7F: it is one number, and leading zeros give no bytes",
                 "00 7F\n"},
        Surprise{"00 -2",
                 "\"-2\" gives FF FF FF FE: a negative number is taken by its 32-bit "
                 "pattern",
                 "02\n"}));

TEST(HexText, WarnsOfNothingThatReadsAsItLooks)
{
    for (const char* text : {"00 FF", "0x7F", "00 12345", "00 7FFFFFFF", "+5 00", "5 00", "FFFE00"})
        EXPECT_EQ(hxmidi({"convert", "--tokens", text}).err, "") << text;
}

TEST(HexText, RefusesWhatIsNotAsciiEvenLeniently)
{
    const CommandRun run = hxmidi({"convert", "--lenient", "F0 7\xC3\xA9 F7"});
    EXPECT_EQ(run.err, "error: the text holds a character that is not plain ASCII\n"
                       "  F0 7\xC3\xA9 F7\n"
                       "      ^\n"
                       "  expected: hex digits, blanks and commas\n"
                       "  next: remove it, or give --raw if these are raw bytes\n");
    EXPECT_EQ(run.code, 2);
}

TEST(HexText, ShowsNoControlCharactersOfBadText)
{
    const CommandRun run = hxmidi({"convert", "F0 \x1B[31m F7"});
    EXPECT_EQ(run.err.find('\x1B'), std::string::npos);
    EXPECT_EQ(run.code, 2);
}

TEST(HexText, CountsWhatItDoesNotShow)
{
    std::string text;
    for (int i = 0; i < 25; ++i)
        text += "GG";
    const CommandRun run = hxmidi({"convert", text});
    EXPECT_NE(run.err.find("error: and 15 more like these\n"), std::string::npos) << run.err;
}

TEST(HexText, ShowsThePartOfALongLineAroundThePiece)
{
    const std::string zeros(200, '0');
    const CommandRun run = hxmidi({"convert", zeros + "GG" + zeros});
    EXPECT_EQ(run.err.substr(0, run.err.find("  expected")), "error: \"GG\" is not a hex number\n"
                                                             "  ..." +
                                                                 std::string(40, '0') + "GG" +
                                                                 std::string(30, '0') + "...\n  " +
                                                                 std::string(43, ' ') + "^~\n");
}
