#include "host/bus/SysExAssembler.h"
#include "tests/host/Bytes.h"

#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

using namespace hx;
using Kind = AssembledEvent::Kind;

namespace {

// "SysEx F07EF7", "RealTime F8", "CutByStatus F001" ... one text for each event.
QStringList texts(const AssembledEvents& events)
{
    QStringList result;
    for (const AssembledEvent& event : events) {
        QString head;
        if (event.kind == Kind::SysEx)
            head = "SysEx ";
        else if (event.kind == Kind::Short)
            head = event.runningStatus != 0 ? "Running " : "Short ";
        else if (event.kind == Kind::RealTime)
            head = "RealTime ";
        else
            head = QString("Drop(%1) ").arg(static_cast<int>(event.reason));
        result << head + QString::fromLatin1(event.bytes.toHex().toUpper());
    }
    return result;
}

QString drop(DropReason reason, const char* bytes)
{
    return QString("Drop(%1) %2").arg(static_cast<int>(reason)).arg(bytes);
}

QStringList assemble(const char* bytes, AssemblerLimits limits = {})
{
    SysExAssembler assembler(limits);
    AssembledEvents events = assembler.feed(hex(bytes), 0);
    for (const AssembledEvent& event : assembler.flush())
        events.push_back(event);
    return texts(events);
}

} // namespace

TEST(SysExAssembler, HandsOverAWholeMessage)
{
    EXPECT_EQ(assemble("F07E7F0601F7"), QStringList({"SysEx F07E7F0601F7"}));
}

TEST(SysExAssembler, HandsOverSeveralMessagesOfOneChunkInOrder)
{
    EXPECT_EQ(assemble("F001F7F002F7"), QStringList({"SysEx F001F7", "SysEx F002F7"}));
}

TEST(SysExAssembler, JoinsAMessageThatArrivesByteByByte)
{
    SysExAssembler assembler;
    EXPECT_TRUE(assembler.feed(hex("F0"), 10).empty());
    EXPECT_TRUE(assembler.feed(hex("01"), 20).empty());
    EXPECT_EQ(assembler.pending(), hex("F001"));
    const AssembledEvents events = assembler.feed(hex("F7"), 30);
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].bytes, hex("F001F7"));
    EXPECT_EQ(events[0].firstByte, 10);
    EXPECT_EQ(events[0].lastByte, 30);
    EXPECT_TRUE(assembler.pending().isEmpty());
}

TEST(SysExAssembler, TakesRealTimeBytesOutOfASysEx)
{
    EXPECT_EQ(assemble("F0F801FE02FFF7"),
              QStringList({"RealTime F8", "RealTime FE", "RealTime FF", "SysEx F00102F7"}));
}

TEST(SysExAssembler, TakesEveryByteFromF8OnAsRealTime)
{
    EXPECT_EQ(assemble("F8F9FAFBFCFDFEFF").size(), 8);
}

TEST(SysExAssembler, EndsACutMessageAtTheNextF0)
{
    EXPECT_EQ(assemble("F00102F003F7"),
              QStringList({drop(DropReason::CutByNewSysEx, "F00102"), "SysEx F003F7"}));
}

TEST(SysExAssembler, EndsACutMessageAtAnotherStatusByte)
{
    EXPECT_EQ(assemble("F00102904001"),
              QStringList({drop(DropReason::CutByStatus, "F00102"), "Short 904001"}));
}

TEST(SysExAssembler, DropsAnF7ThatEndsNothing)
{
    EXPECT_EQ(assemble("F7F001F7"),
              QStringList({drop(DropReason::StrayEnd, "F7"), "SysEx F001F7"}));
}

TEST(SysExAssembler, DropsDataBytesThatFollowNoStatusAsOneRun)
{
    EXPECT_EQ(assemble("010203F001F7"),
              QStringList({drop(DropReason::StrayData, "010203"), "SysEx F001F7"}));
}

TEST(SysExAssembler, DropsUndefinedStatusBytes)
{
    EXPECT_EQ(assemble("F4F5"), QStringList({drop(DropReason::UndefinedStatus, "F4"),
                                             drop(DropReason::UndefinedStatus, "F5")}));
}

TEST(SysExAssembler, KnowsTheLengthsOfShortMessages)
{
    EXPECT_EQ(assemble("904001C005D006E00102F101F20304F305F6"),
              QStringList({"Short 904001", "Short C005", "Short D006", "Short E00102", "Short F101",
                           "Short F20304", "Short F305", "Short F6"}));
}

TEST(SysExAssembler, FollowsRunningStatus)
{
    SysExAssembler assembler;
    const AssembledEvents events = assembler.feed(hex("9040014102"), 0);
    EXPECT_EQ(texts(events), QStringList({"Short 904001", "Running 4102"}));
    EXPECT_EQ(events[1].runningStatus, 0x90);
    EXPECT_EQ(events[1].message(), hex("904102"));
}

TEST(SysExAssembler, KeepsRunningStatusAcrossRealTimeBytesOnly)
{
    EXPECT_EQ(assemble("C001F802"), QStringList({"Short C001", "RealTime F8", "Running 02"}));
    EXPECT_EQ(assemble("C001F001F702"),
              QStringList({"Short C001", "SysEx F001F7", drop(DropReason::StrayData, "02")}));
}

TEST(SysExAssembler, DropsAnUnfinishedShortMessageAtTheNextStatus)
{
    EXPECT_EQ(assemble("9040F001F7"),
              QStringList({drop(DropReason::CutByNewSysEx, "9040"), "SysEx F001F7"}));
    EXPECT_EQ(assemble("9040F7"), QStringList({drop(DropReason::CutByStatus, "9040"),
                                               drop(DropReason::StrayEnd, "F7")}));
}

TEST(SysExAssembler, TakesAMessageOfExactlyTheUpperBound)
{
    EXPECT_EQ(assemble("F00102F7", {4, 1000}), QStringList({"SysEx F00102F7"}));
}

TEST(SysExAssembler, DropsALongerMessageUpToItsEndInPiecesOfTheBound)
{
    const QString reason = drop(DropReason::TooLong, "");
    EXPECT_EQ(assemble("F0010203F7F004F7", {4, 1000}),
              QStringList({reason + "F0010203", reason + "F7", "SysEx F004F7"}));
    EXPECT_EQ(assemble("F001020304050607080910F7", {4, 1000}),
              QStringList({reason + "F0010203", reason + "04050607", reason + "080910F7"}));
}

TEST(SysExAssembler, DropsAMessageWhoseRestDoesNotCome)
{
    SysExAssembler assembler({100, 1000});
    EXPECT_TRUE(assembler.feed(hex("F001"), 0).empty());
    EXPECT_TRUE(assembler.idle(1000).empty());
    EXPECT_EQ(texts(assembler.idle(1001)), QStringList({drop(DropReason::Idle, "F001")}));
    EXPECT_TRUE(assembler.idle(5000).empty());
}

TEST(SysExAssembler, DropsAMessageThatPausedTooLongWhenBytesComeAgain)
{
    SysExAssembler assembler({100, 1000});
    EXPECT_TRUE(assembler.feed(hex("F001"), 0).empty());
    EXPECT_EQ(texts(assembler.feed(hex("02F7F003F7"), 1001)),
              QStringList({drop(DropReason::Idle, "F001"), drop(DropReason::StrayData, "02"),
                           drop(DropReason::StrayEnd, "F7"), "SysEx F003F7"}));
}

TEST(SysExAssembler, RealTimeBytesDoNotKeepAMessageAlive)
{
    SysExAssembler assembler({100, 1000});
    EXPECT_TRUE(assembler.feed(hex("F001"), 0).empty());
    EXPECT_EQ(texts(assembler.feed(hex("FE"), 900)), QStringList({"RealTime FE"}));
    EXPECT_EQ(texts(assembler.feed(hex("FE"), 1100)),
              QStringList({drop(DropReason::Idle, "F001"), "RealTime FE"}));
}

TEST(SysExAssembler, GivesUpAnUnfinishedMessageOnFlush)
{
    SysExAssembler assembler;
    EXPECT_TRUE(assembler.feed(hex("F001"), 0).empty());
    EXPECT_EQ(texts(assembler.flush()), QStringList({drop(DropReason::Abandoned, "F001")}));
    EXPECT_TRUE(assembler.flush().empty());
    EXPECT_EQ(texts(assembler.feed(hex("02F7"), 0)),
              QStringList({drop(DropReason::StrayData, "02"), drop(DropReason::StrayEnd, "F7")}));
}

TEST(SysExAssembler, ReportsStrayDataOnFlushWithItsOwnReason)
{
    SysExAssembler assembler;
    assembler.feed(hex("0102"), 0);
    EXPECT_EQ(texts(assembler.flush()), QStringList({drop(DropReason::StrayData, "0102")}));
}

TEST(SysExAssembler, SaysEveryReasonInWords)
{
    QStringList words;
    for (int i = static_cast<int>(DropReason::StrayData);
         i <= static_cast<int>(DropReason::InputLost); ++i)
        words << dropReasonText(static_cast<DropReason>(i));
    EXPECT_EQ(words.removeDuplicates(), 0);
    EXPECT_FALSE(words.contains(QString()));
}

TEST(SysExAssembler, LostInputEndsTheMessageUnderWayAndTheRunningStatus)
{
    SysExAssembler assembler;
    assembler.feed(hex("F001"), 10);
    const AssembledEvents events = assembler.lose(20);
    EXPECT_EQ(texts(events),
              QStringList({drop(DropReason::InputLost, "F001"), drop(DropReason::InputLost, "")}));
    EXPECT_EQ(events.back().firstByte, 20);
    EXPECT_EQ(events.back().lastByte, 20);
    EXPECT_EQ(texts(assembler.feed(hex("02F7F003F7"), 20)),
              QStringList({drop(DropReason::StrayData, "02"), drop(DropReason::StrayEnd, "F7"),
                           "SysEx F003F7"}));

    assembler.feed(hex("904001"), 30);
    EXPECT_EQ(texts(assembler.lose(40)), QStringList({drop(DropReason::InputLost, "")}));
    EXPECT_EQ(texts(assembler.feed(hex("4100F8F0F7"), 40)).first(), "RealTime F8");
}

// How servers of MIDI ports hand over what is longer than one of their events.

namespace {

// The events of pieces that arrive a millisecond after each other, and of nothing that follows.
QStringList assemblePieces(const QList<QByteArray>& pieces)
{
    SysExAssembler assembler;
    QStringList result;
    Microseconds time = 0;
    for (const QByteArray& piece : pieces)
        result << texts(assembler.feed(piece, time += 1000));
    return result << texts(assembler.flush());
}

QByteArray longSysEx(int size)
{
    QByteArray message(size, '\x55');
    for (int i = 1; i < size - 1; ++i)
        message[i] = char(i % 0x80);
    message[0] = char(0xF0);
    message[size - 1] = char(0xF7);
    return message;
}

QString whole(const QByteArray& message)
{
    return "SysEx " + QString::fromLatin1(message.toHex().toUpper());
}

} // namespace

TEST(SysExAssembler, LongSysExInPiecesOfAnySizeIsOneMessage)
{
    const QByteArray message = longSysEx(5000);
    for (const int size : {1, 3, 6, 256, 2048, 4999}) {
        QList<QByteArray> pieces;
        for (int at = 0; at < message.size(); at += size)
            pieces << message.mid(at, size);
        EXPECT_EQ(assemblePieces(pieces), QStringList{whole(message)}) << size;
    }
}

TEST(SysExAssembler, PieceThatGoesOnWithoutAStatusByteBelongsToTheSysExBeforeIt)
{
    EXPECT_EQ(assemblePieces({hex("F0010203"), hex("040506"), hex("0708F7"), hex("F009F7")}),
              (QStringList{"SysEx F00102030405060708F7", "SysEx F009F7"}));
    EXPECT_EQ(assemblePieces({hex("F001"), hex("F7")}), QStringList{"SysEx F001F7"});
}

TEST(SysExAssembler, RealTimeBetweenPiecesIsNoPartOfTheSysEx)
{
    EXPECT_EQ(assemblePieces({hex("F00102"), hex("F8"), hex("03FEF7")}),
              (QStringList{"RealTime F8", "RealTime FE", "SysEx F0010203F7"}));
}

TEST(SysExAssembler, SysExCancelledByF4IsDroppedWholeAndTheNextOneArrives)
{
    const QStringList expected = {drop(DropReason::CutByStatus, "F00102"),
                                  drop(DropReason::UndefinedStatus, "F4"), "SysEx F003F7"};
    EXPECT_EQ(assemblePieces({hex("F00102F4"), hex("F003F7")}), expected);
    EXPECT_EQ(assemblePieces({hex("F00102"), hex("F4"), hex("F003F7")}), expected);
    EXPECT_EQ(assemblePieces({hex("F001"), hex("02"), hex("F4F003F7")}), expected);
}

TEST(SysExAssembler, DataAfterACancelledSysExIsNoMessage)
{
    EXPECT_EQ(
        assemblePieces({hex("F00102"), hex("F4"), hex("0405F7"), hex("F006F7")}),
        (QStringList{drop(DropReason::CutByStatus, "F00102"),
                     drop(DropReason::UndefinedStatus, "F4"), drop(DropReason::StrayData, "0405"),
                     drop(DropReason::StrayEnd, "F7"), "SysEx F006F7"}));
}

TEST(SysExAssembler, SysExWhosePiecesStopIsNotJoinedToTheNext)
{
    EXPECT_EQ(assemblePieces({hex("F00102"), hex("0304"), hex("F005F7")}),
              (QStringList{drop(DropReason::CutByNewSysEx, "F001020304"), "SysEx F005F7"}));
}
