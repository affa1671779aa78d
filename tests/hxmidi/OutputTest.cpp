// What every command has in common: exit codes, JSON, --strict, help, complaints about usage.
#include "tests/hxmidi/CommandRun.h"

#include <QJsonArray>

#include <gtest/gtest.h>

TEST(Output, IsOneJsonDocumentWithItsErrors)
{
    const CommandRun run = hxmidi({"parse", "--json", "F0 7G"});
    EXPECT_EQ(run.code, 2);
    const QJsonObject expected{
        {QStringLiteral("command"), QStringLiteral("parse")},
        {QStringLiteral("ok"), false},
        {QStringLiteral("exitCode"), 2},
        {QStringLiteral("result"), QJsonObject()},
        {QStringLiteral("errors"),
         QJsonArray{QJsonObject{
             {QStringLiteral("what"), QStringLiteral("\"7G\" is not a hex number")},
             {QStringLiteral("expected"), QStringLiteral("digits 0 to 9 and A to F")},
             {QStringLiteral("next"),
              QStringLiteral("correct it; with --lenient it is left out, as HxMidiData does")},
             {QStringLiteral("source"), QString()},
             {QStringLiteral("line"), 1},
             {QStringLiteral("column"), 4},
             {QStringLiteral("text"), QStringLiteral("7G")}}}},
        {QStringLiteral("warnings"), QJsonArray()},
        {QStringLiteral("notes"), QJsonArray()}};
    EXPECT_EQ(run.json(), expected);
}

TEST(Output, SaysOkInJsonAlsoWhenAPatternDoesNotFit)
{
    const CommandRun run = hxmidi({"match", "--json", "F1", "F0"});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.json().value(QStringLiteral("ok")).toBool());
    EXPECT_EQ(run.json().value(QStringLiteral("notes")).toArray().size(), 1);
}

TEST(Output, IsJsonForBadOptionsToo)
{
    const CommandRun run = hxmidi({"parse", "--json", "--frobnicate", "F0"});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.json().value(QStringLiteral("errors")).toArray().size(), 1);
}

TEST(Output, RefusesJsonOfMoreRowsThanADocumentMayHold)
{
    const CommandRun run = hxmidi({"split", "--json"}, QByteArray(100001, '\xF8'));
    EXPECT_EQ(run.firstComplaint(), "error: 100001 rows are too many for a JSON document");
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(hxmidi({"split", "--json"}, QByteArray(100000, '\xF8')).code, 0);
}

TEST(Output, IsEmptyWithErrors)
{
    EXPECT_EQ(hxmidi({"split", "F0 F7 7G"}).out, "");
}

TEST(Output, TakesWarningsAsErrorsWhenStrict)
{
    const CommandRun run = hxmidi({"parse", "--strict", "F0,123"});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.code, 2);
    EXPECT_NE(run.err.find("error: with --strict a warning is an error, and there is one\n"
                           "  next: mend what is warned of, or drop --strict\n"),
              std::string::npos)
        << run.err;
    EXPECT_EQ(hxmidi({"parse", "--strict", "F0"}).code, 0);
}

TEST(Output, NamesAnUnknownCommand)
{
    const CommandRun run = hxmidi({"frobnicate", "F0"});
    EXPECT_EQ(run.err, "error: \"frobnicate\" is not a command\n"
                       "  expected: one of: parse, build, match, diff, dump, split, fields, sum, "
                       "hash, convert\n"
                       "  next: see 'hxmidi --help' and 'hxmidi COMMAND --help'\n");
    EXPECT_EQ(run.code, 2);
}

TEST(Output, NamesSurplusWordsInTheirOrder)
{
    EXPECT_EQ(hxmidi({"diff", "F0", "F1", "F2", "--all", "F3"}).firstComplaint(),
              "error: not expected here: \"F2\" \"--all\" \"F3\"");
}

TEST(Output, WantsACommand)
{
    EXPECT_EQ(hxmidi({}).firstComplaint(), "error: no command is given");
    EXPECT_EQ(hxmidi({}).code, 2);
}

TEST(Output, HasHelpForEveryCommandAndItsExitCodes)
{
    const CommandRun all = hxmidi({"--help"});
    EXPECT_EQ(all.code, 0);
    EXPECT_NE(all.out.find("Exit codes:\n  0 "), std::string::npos);
    for (const char* command :
         {"parse", "build", "match", "diff", "dump", "split", "fields", "sum", "hash", "convert"}) {
        EXPECT_NE(all.out.find(std::string("\n  ") + command + " "), std::string::npos) << command;
        const CommandRun help = hxmidi({command, "--help"});
        EXPECT_EQ(help.code, 0);
        EXPECT_NE(help.out.find("--strict"), std::string::npos) << command;
        EXPECT_NE(help.out.find("Exit codes:\n  0 "), std::string::npos) << command;
    }
}

TEST(Output, HasAVersion)
{
    EXPECT_EQ(hxmidi({"--version"}).out.substr(0, 7), "hxmidi ");
    EXPECT_EQ(hxmidi({"--version"}).code, 0);
}

TEST(Output, TakesWordsBehindTwoDashesAsTheyAre)
{
    EXPECT_EQ(hxmidi({"build", "CSTR CSTR", "--", "--json", "--"}).out,
              "2D 2D 6A 73 6F 6E 2D 2D\n");
    EXPECT_EQ(hxmidi({"convert", "--", "F0"}).out, "F0\n");
    EXPECT_EQ(hxmidi({"build", "V8", "-0x10"}).out, "00\n");
}

TEST(Output, KeepsOnlyTheFirstWarningsInJson)
{
    std::string numbers;
    for (int i = 0; i < 25; ++i)
        numbers += "123,";
    EXPECT_EQ(hxmidi({"parse", "--json", numbers})
                  .json()
                  .value(QStringLiteral("warnings"))
                  .toArray()
                  .size(),
              10);
}
