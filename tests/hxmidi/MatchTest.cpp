// What is said about matches and bad patterns; which pattern fits what is in the tables of
// docs/formats/pattern.md, which GrammarTablesTest runs.
#include "tests/hxmidi/CommandRun.h"

#include <QJsonArray>

#include <gtest/gtest.h>

TEST(Match, PrintsWhereThePatternFits)
{
    const CommandRun run = hxmidi({"match", "7E .. 06", "F0", "7E", "00", "06", "01", "F7"});
    EXPECT_EQ(run.out, "match at byte 1: 7E 00 06\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.code, 0);
}

TEST(Match, ExitsWithOneWhenThePatternDoesNotFit)
{
    const CommandRun run = hxmidi({"match", "F0 7E .. 06 03", "F07E000601F7"});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "note: this word does not fit; the pattern before it does\n"
                       "  F0 7E .. 06 03\n"
                       "              ^~\n");
    EXPECT_EQ(run.code, 1);
}

TEST(Match, SaysWhenNotEvenTheFirstWordFits)
{
    EXPECT_EQ(hxmidi({"match", "--start", "7E 00", "F07E00"}).err,
              "note: the first word of the pattern does not fit\n"
              "  7E 00\n"
              "  ^~\n");
}

TEST(Match, GivesNoPlaceOfFailureAmongAlternatives)
{
    const CommandRun run = hxmidi({"match", "(F1|F2 00)", "F07E00"});
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.code, 1);
}

TEST(Match, WarnsOfAMatchInTheMiddleOfAByte)
{
    const CommandRun run = hxmidi({"match", "7E", "17 E0"});
    EXPECT_EQ(run.out, "match at byte 0: 17 E0\n");
    EXPECT_EQ(run.err, "warning: the match begins in the middle of byte 0\n"
                       "  next: give --start to tie the pattern to the first byte\n");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(hxmidi({"match", "--strict", "7E", "17 E0"}).code, 2);
    EXPECT_EQ(hxmidi({"match", "--start", "7E", "17 E0"}).code, 1);
}

TEST(Match, CountsBytesOfWhichOnlyOneDigitFits)
{
    EXPECT_EQ(hxmidi({"match", "F", "01 F7"}).out, "match at byte 1: F7\n");
    EXPECT_EQ(hxmidi({"match", "1F", "01 F7"}).out, "match at byte 0: 01 F7\n");
}

TEST(Match, FitsWithoutAByteWhenThePatternIsEmptyAndWarnsOfIt)
{
    const CommandRun run = hxmidi({"match", "", "F0"});
    EXPECT_EQ(run.out, "match at byte 0:\n");
    EXPECT_EQ(run.err, "warning: the pattern is empty and fits anything\n"
                       "  next: write the bytes to look for, such as 'F0 7E .. 06 02'\n");
    EXPECT_EQ(hxmidi({"match", " "}).out, "match at byte 0:\n");
    EXPECT_EQ(hxmidi({"match", "--strict", "", "F0"}).code, 2);
}

TEST(Match, PrintsEachMessageThatFits)
{
    const CommandRun run =
        hxmidi({"match", "--each", "--start", "F0 .. 02", "F00102F7 F00103F7 90407F F00502F7"});
    EXPECT_EQ(run.out, "F0 01 02 F7\nF0 05 02 F7\n");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(hxmidi({"match", "-e", "F1", "F00102F7 90407F"}).code, 1);
}

TEST(Match, PrintsNothingWhenQuiet)
{
    const CommandRun fits = hxmidi({"match", "-q", "F0", "F001F7"});
    EXPECT_EQ(fits.out + fits.err, "");
    EXPECT_EQ(fits.code, 0);
    const CommandRun fails = hxmidi({"match", "-q", "F1", "F001F7"});
    EXPECT_EQ(fails.out + fails.err, "");
    EXPECT_EQ(fails.code, 1);
}

TEST(Match, TakesAPatternInBracketsAsItIs)
{
    EXPECT_EQ(hxmidi({"match", "[EF]", "01 F7"}).out, "match at byte 1: F7\n");
}

TEST(Match, RefusesTheLibrarysSilentFailures)
{
    const CommandRun run = hxmidi({"match", "F0 (00", "F000"});
    EXPECT_EQ(run.err, "error: the parenthesis is not closed\n"
                       "  F0 (00\n"
                       "     ^\n"
                       "  expected: ( and )\n"
                       "  next: close it, or write none\n");
    EXPECT_EQ(run.code, 2);
}

TEST(Match, PointsAtARepetitionOfNothing)
{
    for (const char* pattern : {"*", "(*0)", "0|+", "0**", "{3}", "(?:*)"}) {
        const CommandRun run = hxmidi({"match", pattern, "00"});
        EXPECT_EQ(run.firstComplaint(), "error: there is nothing here that could be repeated")
            << pattern;
        EXPECT_EQ(run.code, 2);
    }
}

TEST(Match, AcceptsEveryKindOfElement)
{
    for (const char* pattern : {"[]0]", "[^F]0", "(?:0)0", "(?=0)00", "(?!F)00", "0{2}", "0{1,2}",
                                "0{2,}", "^*00", "^00$", "(0|1)?0", "[0\\]]0", "0{ 2 }"})
        EXPECT_EQ(hxmidi({"match", pattern, "00"}).code, 0) << pattern;
}

TEST(Match, RefusesPatternsThatWouldTakeAllMemory)
{
    for (const std::string& pattern :
         {std::string("((.{1000}){1000}){1000}"), std::string(10001, '.'), std::string(".{99999}"),
          std::string(101, '(') + "0" + std::string(101, ')'), std::string("(.{101}){100}")})
        EXPECT_EQ(hxmidi({"match", pattern, "00"}).firstComplaint(),
                  "error: the pattern is too large")
            << pattern.substr(0, 40);
    EXPECT_EQ(hxmidi({"match", "(.{100}){100}", "00"}).code, 1);
    EXPECT_EQ(hxmidi({"match", std::string(100, '(') + "0" + std::string(100, ')'), "00"}).code, 0);
}

TEST(Match, PointsAtWhatNeverFits)
{
    EXPECT_EQ(hxmidi({"match", "-q", "F0 V V,7E", "F07E"}).err,
              "warning: \"V V,\" never fits, as it is not a hex digit\n"
              "  F0 V V,7E\n"
              "     ^~~~\n"
              "  next: write .. or XX for a byte of any value, . for one digit\n");
    EXPECT_EQ(hxmidi({"match", "-q", "F0 XXX", "F07E"}).err,
              "warning: \"X\" never fits, as it is not a hex digit\n"
              "  F0 XXX\n"
              "       ^\n"
              "  next: write .. or XX for a byte of any value, . for one digit\n");
    EXPECT_EQ(hxmidi({"match", "F0 X X xx", "F07E00"}).err, "");
}

TEST(Match, RefusesAPatternThatIsNotAscii)
{
    const CommandRun run = hxmidi({"match", "F0\t7E", "F07E"});
    EXPECT_EQ(run.firstComplaint(), "error: the pattern holds a character that is not plain ASCII");
    EXPECT_EQ(run.code, 2);
}

TEST(Match, GivesPlacesAsJson)
{
    const QJsonArray matches = hxmidi({"match", "--json", "-e", "7E", "90407F F07E00F7"})
                                   .json()
                                   .value(QStringLiteral("result"))
                                   .toObject()
                                   .value(QStringLiteral("matches"))
                                   .toArray();
    const QJsonArray expected{
        QJsonObject{{QStringLiteral("at"), 4},
                    {QStringLiteral("halfByte"), false},
                    {QStringLiteral("matched"), QStringLiteral("7E")},
                    {QStringLiteral("bytes"), QStringLiteral("F0 7E 00 F7")}}};
    EXPECT_EQ(matches, expected);
}

TEST(Match, APatternThatTakesTooLongIsRefusedAfterASecond)
{
    const std::string data(20000, 'F');
    const CommandRun run = hxmidi({"match", "((F|FF)*)*0", data});
    EXPECT_EQ(run.firstComplaint(),
              "error: the pattern needs more than a second of processor time");
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(hxmidi({"match", "^((F|FF)*)*0", data}).code, 1)
        << "quick, as it is tied to the start";
}

TEST(Match, APatternThatTakesTooLongToReadIsRefusedAfterASecond)
{
    std::string pattern;
    for (int i = 0; i < 9000; ++i)
        pattern += "F*";
    const CommandRun run = hxmidi({"match", pattern, "F0"});
    EXPECT_EQ(run.firstComplaint(),
              "error: the pattern needs more than a second of processor time");
    EXPECT_EQ(run.code, 2);
}
