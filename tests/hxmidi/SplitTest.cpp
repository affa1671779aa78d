#include "tests/hxmidi/CommandRun.h"

#include <QJsonArray>

#include <gtest/gtest.h>

TEST(Split, PrintsOneMessageALine)
{
    const CommandRun run = hxmidi({"split", "F00102F7 90407F 804000"});
    EXPECT_EQ(run.out, "F0 01 02 F7\n90 40 7F\n80 40 00\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(hxmidi({"split", "--status", "F00102F7 90407F 804000"}).out, run.out);
}

TEST(Split, WarnsOfARealTimeByteThatCutsAMessage)
{
    const CommandRun run = hxmidi({"split", "F0 01 F8 02 F7"});
    EXPECT_EQ(run.out, "F0 01\nF8 02 F7\n");
    EXPECT_EQ(run.err, "warning: a real-time byte cuts the message before 2 in two\n"
                       "  next: take bytes F8 to FF out of the stream first\n");
    EXPECT_EQ(hxmidi({"split", "F8 F8 90 40 7F FE"}).err, "");
}

TEST(Split, WarnsOfDataWithoutAStatus)
{
    const CommandRun run = hxmidi({"split", "40 41 90 40"});
    EXPECT_EQ(run.out, "40 41\n90 40\n");
    EXPECT_EQ(run.err, "warning: the piece at 0 has no status byte\n"
                       "  next: look for bytes that were lost, or for a second F7\n");
}

TEST(Split, AnF7WithNothingToEndBeginsAPiece)
{
    EXPECT_EQ(hxmidi({"split", "F0 01 F7 F7 02"}).out, "F0 01 F7\nF7 02\n");
}

TEST(Split, CutsIntoEqualPieces)
{
    EXPECT_EQ(hxmidi({"split", "--size", "2", "0102030405"}).out, "01 02\n03 04\n05\n");
}

TEST(Split, GivesNoPiecesOfDataThatIsNoLongerThanOne)
{
    const CommandRun run = hxmidi({"split", "--size", "5", "0102030405"});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              "warning: there are no pieces: the data has 5 bytes, no more than one piece\n"
              "  next: take the data as it is, or give a smaller --size\n");
    EXPECT_EQ(run.code, 0);
}

TEST(Split, GivesNothingOfNothing)
{
    EXPECT_EQ(hxmidi({"split", ""}).out, "");
    EXPECT_EQ(hxmidi({"split", "--size", "2", ""}).err, "");
}

TEST(Split, RefusesASizeBelowOne)
{
    EXPECT_EQ(hxmidi({"split", "--size", "0", "0102"}).code, 2);
    EXPECT_EQ(hxmidi({"split", "--size", "-2", "0102"}).code, 2);
    EXPECT_EQ(hxmidi({"split", "--size", "1", "--status", "0102"}).code, 2);
}

TEST(Split, GivesPlacesAsJson)
{
    const QJsonArray pieces = hxmidi({"split", "--json", "--size", "2", "010203"})
                                  .json()
                                  .value(QStringLiteral("result"))
                                  .toObject()
                                  .value(QStringLiteral("pieces"))
                                  .toArray();
    const QJsonArray expected{
        QJsonObject{{QStringLiteral("at"), 0}, {QStringLiteral("bytes"), QStringLiteral("01 02")}},
        QJsonObject{{QStringLiteral("at"), 2}, {QStringLiteral("bytes"), QStringLiteral("03")}}};
    EXPECT_EQ(pieces, expected);
}
