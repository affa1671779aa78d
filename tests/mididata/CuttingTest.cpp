#include "tests/mididata/Bytes.h"
#include "tests/mididata/ExtremeIntegers.h"

#include <gtest/gtest.h>

namespace {

QList<QByteArray> splitBy(int n, const char* digits)
{
    return bytesOf(dataOf(digits).split(n));
}

QList<QByteArray> messages(const char* digits)
{
    return bytesOf(dataOf(digits).splitOnStatus());
}

using Pieces = QList<QByteArray>;

} // namespace

TEST(Cutting, midFollowsTheArraysRules)
{
    const HxMidiData data = dataOf("01020304");
    EXPECT_EQ(data.mid(1, 2), hex("0203"));
    EXPECT_EQ(data.mid(1, -1), hex("020304"));
    EXPECT_EQ(data.mid(1, greatest), hex("020304"));
    EXPECT_EQ(data.mid(5, 1), QByteArray());
    EXPECT_EQ(data.mid(-1, 2), hex("01"));
    EXPECT_EQ(data.mid(least, greatest), QByteArray());
}

TEST(Cutting, splitCutsFullPiecesAndARest)
{
    EXPECT_EQ(splitBy(2, "0102030405"), Pieces({hex("0102"), hex("0304"), hex("05")}));
    EXPECT_EQ(splitBy(2, "01020304"), Pieces({hex("0102"), hex("0304")}));
}

TEST(Cutting, splitOfOnePieceOrLessIsEmpty)
{
    EXPECT_EQ(splitBy(5, "0102030405"), Pieces());
    EXPECT_EQ(splitBy(greatest, "0102030405"), Pieces());
    EXPECT_EQ(splitBy(0, "0102030405"), Pieces());
    EXPECT_EQ(splitBy(1, ""), Pieces());
}

TEST(Cutting, splitByANegativeNumberGivesTheRestOnly)
{
    EXPECT_EQ(splitBy(-2, "0102030405"), Pieces({hex("01")}));
    EXPECT_EQ(splitBy(-3, "0102030405"), Pieces({hex("0102")}));
    EXPECT_EQ(splitBy(-5, "0102030405"), Pieces());
    EXPECT_EQ(splitBy(-1, "0102030405"), Pieces());
    EXPECT_EQ(splitBy(least, "0102030405"), Pieces({hex("0102030405")}));
    EXPECT_EQ(splitBy(-1, ""), Pieces());
}

TEST(Cutting, splitOnStatusCutsAtEveryStatusByte)
{
    EXPECT_EQ(messages("F00102F790407F804000"),
              Pieces({hex("F00102F7"), hex("90407F"), hex("804000")}));
}

TEST(Cutting, dataBeforeTheFirstStatusIsAPiece)
{
    EXPECT_EQ(messages("40419040"), Pieces({hex("4041"), hex("9040")}));
}

TEST(Cutting, aRealTimeByteEndsASystemExclusiveMessage)
{
    EXPECT_EQ(messages("F001F802F7"), Pieces({hex("F001"), hex("F802F7")}));
}

TEST(Cutting, anEndOfExclusiveThatComesFirstOpensAPiece)
{
    EXPECT_EQ(messages("F701F7"), Pieces({hex("F701F7")}));
    EXPECT_EQ(messages("F7F7"), Pieces({hex("F7F7")}));
    EXPECT_EQ(messages("F001F7F7"), Pieces({hex("F001F7"), hex("F7")}));
    EXPECT_EQ(messages("F7F0"), Pieces({hex("F7"), hex("F0")}));
}

TEST(Cutting, runningStatusStaysInOnePiece)
{
    EXPECT_EQ(messages("90407F417F"), Pieces({hex("90407F417F")}));
}

TEST(Cutting, dataBehindAnEndOfExclusiveIsAPieceWithoutStatus)
{
    EXPECT_EQ(messages("F0F74142"), Pieces({hex("F0F7"), hex("4142")}));
}

TEST(Cutting, splitOnStatusOfNothingIsNothing)
{
    EXPECT_EQ(messages(""), Pieces());
    EXPECT_EQ(messages("F7"), Pieces({hex("F7")}));
}

TEST(Cutting, piecesAreNewObjects)
{
    HxMidiData data = dataOf("F0F7F0F7");
    data.auxA = data.auxB = data.auxC = 7;
    data.source = reinterpret_cast<HxMidiIn*>(&data);
    for (const HxMidiData& piece : data.split(2) + data.splitOnStatus()) {
        EXPECT_EQ(piece.auxA, 0u);
        EXPECT_EQ(piece.source, nullptr);
        EXPECT_EQ(piece.auxB, 0u);
    }
}
