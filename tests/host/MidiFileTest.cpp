#include "host/image/ImageFile.h"

#include "qt/Saturated.h"
#include "tests/host/Bytes.h"
#include "tests/host/ImageSamples.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

using namespace hx;

namespace {

QByteArray number(int value)
{
    QByteArray bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.append(static_cast<char>(value >> shift));
    return bytes;
}

QByteArray header(int format, int tracks)
{
    QByteArray bytes = "MThd" + number(6);
    bytes += QByteArray(1, '\0') + static_cast<char>(format);
    bytes += QByteArray(1, '\0') + static_cast<char>(tracks);
    return bytes + hex("0060");
}

const QByteArray endOfTrack = hex("00FF2F00");

QByteArray track(const QByteArray& events)
{
    return "MTrk" + number(saturated(events.size())) + events;
}

QByteArray midiFile(const QByteArray& events)
{
    return header(0, 1) + track(events + endOfTrack);
}

QByteArray variableLength(int value)
{
    QByteArray bytes(1, static_cast<char>(value & 0x7F));
    while ((value >>= 7) > 0)
        bytes.prepend(static_cast<char>((value & 0x7F) | 0x80));
    return bytes;
}

QList<QByteArray> readMessages(const QByteArray& content)
{
    const ImageFile file = parseImageFile(content);
    EXPECT_EQ(file.format, ImageFormat::MidiFile);
    EXPECT_TRUE(file.problems.empty()) << imageProblemLine(file.problems.front()).toStdString();
    return messagesOf(file);
}

void expectRefused(const QByteArray& content, qint64 offset, const char* text)
{
    const ImageFile file = parseImageFile(content);
    ASSERT_FALSE(file.problems.empty());
    EXPECT_EQ(file.problems[0].place.offset, offset);
    EXPECT_TRUE(file.problems[0].what.contains(text)) << file.problems[0].what.toStdString();
}

} // namespace

TEST(MidiFile, ReadsSysExEvents)
{
    EXPECT_EQ(readMessages(midiFile(hex("00F0030102F7") + hex("8100F00203F7"))),
              QList<QByteArray>({hex("F00102F7"), hex("F003F7")}));
}

TEST(MidiFile, NamesThePlaceInTheFileOfEachByte)
{
    const ImageFile file = parseImageFile(midiFile(hex("00F0030102F7")));
    ASSERT_EQ(file.messages.size(), 1u);
    EXPECT_EQ(file.messages[0].offsetOf(0), 23); // the event's F0
    EXPECT_EQ(file.messages[0].offsetOf(1), 25); // behind the event's length
}

TEST(MidiFile, JoinsAMessageThatIsCutIntoPackets)
{
    EXPECT_EQ(readMessages(midiFile(hex("00F0020102") + hex("10F70203 04") + hex("10F70205F7"))),
              QList<QByteArray>({hex("F00102030405F7")}));
}

TEST(MidiFile, TakesAWholeMessageInAnEscape)
{
    EXPECT_EQ(readMessages(midiFile(hex("00F704F00102F7"))), QList<QByteArray>({hex("F00102F7")}));
}

TEST(MidiFile, PassesOverMetaEvents)
{
    EXPECT_EQ(
        readMessages(midiFile(hex("00FF0303414243") + hex("00FF510307A120") + hex("00F00201F7"))),
        QList<QByteArray>({hex("F001F7")}));
}

TEST(MidiFile, ReadsLengthsOfSeveralBytes)
{
    const QByteArray data(200, '\x01');
    EXPECT_EQ(readMessages(midiFile(hex("00F0") + variableLength(201) + data + '\xF7')),
              QList<QByteArray>({'\xF0' + data + '\xF7'}));
}

TEST(MidiFile, PutsTheEventsOfSeveralTracksInTheirOrderInTime)
{
    const QByteArray one = track(hex("00F00201F7") + hex("20F00203F7") + endOfTrack);
    const QByteArray two = track(hex("10F00202F7") + endOfTrack);
    EXPECT_EQ(readMessages(header(1, 2) + one + two),
              QList<QByteArray>({hex("F001F7"), hex("F002F7"), hex("F003F7")}));
}

TEST(MidiFile, ReadsAWholeImage)
{
    QByteArray events;
    for (const HxMidiData& message : samples::messages())
        events += hex("00F0") + variableLength(saturated(message.bytes.size()) - 1) +
                  message.bytes.mid(1);
    const UpdateImage image =
        parseUpdateImage(parseImageFile(midiFile(events)), samples::product());
    EXPECT_TRUE(image.ok());
    EXPECT_EQ(image.code, samples::code(300));
}

TEST(MidiFile, RefusesChannelEventsAtTheirStatus)
{
    expectRefused(midiFile(hex("00904001")), 23, "the event 90 is not SysEx");
    expectRefused(midiFile(hex("00F00201F7") + hex("004001")), 28, "the event 40 is not SysEx");
}

TEST(MidiFile, RefusesAMessageWithoutEnd)
{
    expectRefused(midiFile(hex("00F00101")), 25, "cut off by the end of the file");
    expectRefused(midiFile(hex("00F00101") + hex("00F00202F7")), 27, "cut off by the F0");
}

TEST(MidiFile, RefusesAnEscapeWithOtherBytes)
{
    expectRefused(midiFile(hex("00F701F8")), 25, "byte F8 belongs to no message");
}

TEST(MidiFile, RefusesAFileThatIsCutOffAnywhere)
{
    const QByteArray whole = midiFile(hex("00F0030102F7"));
    for (int size = 4; size < whole.size(); ++size) {
        const ImageFile file = parseImageFile(whole.left(size));
        EXPECT_FALSE(file.problems.empty()) << size;
        EXPECT_TRUE(file.messages.empty()) << size;
    }
}

TEST(MidiFile, RefusesOtherFormats)
{
    expectRefused(header(2, 1) + track(endOfTrack), 8, "format 2");
    expectRefused("MThd" + number(5) + hex("000000010060") + track(endOfTrack), 4, "5 bytes");
}

TEST(MidiFile, SkipsBytesAfterTheLastTrackWithAWarning)
{
    const QByteArray whole = midiFile(hex("00F00201F7"));
    for (const QByteArray& more : {hex("00"), QByteArray("abcdefghij"), QByteArray(500, '\xF0')}) {
        const ImageFile file = parseImageFile(whole + more);
        EXPECT_TRUE(file.problems.empty());
        EXPECT_EQ(messagesOf(file), QList<QByteArray>({hex("F001F7")}));
        EXPECT_EQ(file.warnings,
                  QStringList({QStringLiteral("Skipped in the MIDI file: %1 bytes after "
                                              "the last chunk, from byte %2 on.")
                                   .arg(more.size())
                                   .arg(whole.size())}));
    }
}

TEST(MidiFile, SkipsUnknownChunksWithAWarning)
{
    const QByteArray other = "XFIH" + number(3) + "abc";
    const QByteArray one = track(hex("00F00201F7") + endOfTrack);
    const QByteArray two = track(hex("10F00202F7") + endOfTrack);
    const ImageFile file =
        parseImageFile(header(1, 2) + other + one + other + "XFKM" + number(0) + two + other);
    EXPECT_TRUE(file.problems.empty());
    EXPECT_EQ(messagesOf(file), QList<QByteArray>({hex("F001F7"), hex("F002F7")}));
    EXPECT_EQ(file.warnings,
              QStringList({"Skipped in the MIDI file: 4 chunks that are not a track, the "
                           "first \"XFIH\" at byte 14."}));
    EXPECT_EQ(
        parseImageFile(header(0, 1) + other + one).warnings,
        QStringList({"Skipped in the MIDI file: 1 chunk that is not a track, the first \"XFIH\" "
                     "at byte 14."}));
    EXPECT_EQ(parseImageFile(header(0, 1) + one).warnings, QStringList());
}

TEST(MidiFile, RefusesMoreTracksThanItsHeaderStates)
{
    const QByteArray one = track(hex("00F00201F7") + endOfTrack);
    expectRefused(header(0, 1) + one + one, header(0, 1).size() + one.size(),
                  "more tracks than the 1");
    expectRefused(header(0, 1) + one + "MTrk", header(0, 1).size() + one.size(), "more tracks");
}

TEST(MidiFile, RefusesSomethingElseThanATrack)
{
    expectRefused(header(0, 1) + "\1Trk" + number(0), 14, "MTrk");
    expectRefused(header(0, 1) + "XTrk" + number(9), 14, "MTrk");
    expectRefused(header(0, 1) + "XTrk" + number(0), 22, "cut off");
}

TEST(MidiFile, RefusesAnEventThatIsLongerThanItsTrack)
{
    expectRefused(header(0, 1) + track(hex("00F00701F7")), 23, "longer than its track");
    expectRefused(header(0, 1) + track(hex("00F00301F7")) + "x", 23, "longer than its track");
}

TEST(MidiFile, RefusesANumberOfMoreThanFourBytes)
{
    expectRefused(midiFile(hex("8181818101F00201F7")), 25, "more than four bytes");
}

TEST(MidiFile, RefusesATrackThatEndsInsideAnEvent)
{
    expectRefused(header(0, 1) + track(hex("00")), 23, "ends inside an event");
    expectRefused(header(0, 1) + track(hex("81")), 23, "ends inside an event");
    expectRefused(header(0, 1) + track(hex("00FF")), 24, "ends inside an event");
}

TEST(MidiFile, ATrackThatEndsBeforeTheTypeOfAMetaEventIsRefusedAtItsEndNotBehindIt)
{
    const QByteArray content = header(0, 1) + track(hex("00FF"));
    expectRefused(content, content.size(), "a track ends inside an event.");
}

TEST(MidiFile, RefusesAFileWithoutSysEx)
{
    expectRefused(midiFile(QByteArray()), -1, "no SysEx event");
}

TEST(MidiFile, AHugeLengthDoesNotOverflow)
{
    expectRefused(header(0, 1) + "MTrk" + hex("FFFFFFFF") + endOfTrack,
                  header(0, 1).size() + 8 + endOfTrack.size(), "cut off");
    expectRefused("MThd" + hex("FFFFFFFF") + hex("000000010060"), 14, "cut off");
    expectRefused(midiFile(hex("00F0FFFFFF7F01")), 23, "longer than its track");
}
