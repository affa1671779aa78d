#include "host/image/ImageFile.h"
#include "host/image/UpdateImage.h"

#include "tests/host/Bytes.h"
#include "tests/host/ImageSamples.h"
#include "tests/host/TestFiles.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace hx;

namespace {

void expectRefused(const QByteArray& content, qint64 offset)
{
    const ImageFile file = parseImageFile(content);
    ASSERT_EQ(file.problems.size(), 1u);
    EXPECT_EQ(file.problems[0].place.offset, offset)
        << imageProblemLine(file.problems[0]).toStdString();
    EXPECT_TRUE(file.messages.empty());
    EXPECT_FALSE(file.problems[0].next.isEmpty());
}

} // namespace

TEST(ImageFile, ReadsRawSysEx)
{
    const ImageFile file = parseImageFile(hex("F00102F7F003F7"));
    EXPECT_EQ(file.format, ImageFormat::RawSysEx);
    EXPECT_EQ(file.size, 7);
    EXPECT_TRUE(file.problems.empty());
    EXPECT_EQ(messagesOf(file), QList<QByteArray>({hex("F00102F7"), hex("F003F7")}));
    EXPECT_EQ(file.messages[1].offsetOf(0), 4);
    EXPECT_EQ(file.messages[1].offsetOf(2), 6);
    EXPECT_EQ(file.messages[1].offsetOf(99), 6);
}

TEST(ImageFile, ReadsHexTextHoweverItIsSpaced)
{
    for (const char* text :
         {"F0 01 02 F7", "f00102f7", "F0,01, 02\r\n\tF7\n", "\n F001 02F7", "F00102F7\n"}) {
        const ImageFile file = parseImageFile(text);
        EXPECT_EQ(file.format, ImageFormat::HexText) << text;
        EXPECT_TRUE(file.problems.empty()) << text;
        EXPECT_EQ(messagesOf(file), QList<QByteArray>({hex("F00102F7")})) << text;
    }
}

TEST(ImageFile, NamesThePlaceInTheTextOfEachByte)
{
    const ImageFile file = parseImageFile("F0 01 F7\nF0 02 F7\n");
    ASSERT_EQ(file.messages.size(), 2u);
    EXPECT_EQ(file.messages[1].offsetOf(0), 9);
    EXPECT_EQ(file.messages[1].offsetOf(1), 12);
}

TEST(ImageFile, RefusesAnEmptyFile)
{
    expectRefused(QByteArray(), -1);
}

TEST(ImageFile, RefusesATextAtTheFirstCharacterThatIsNoHex)
{
    expectRefused("Hello", 0);
    expectRefused("F0 01 0g F7", 7);
    expectRefused("A text", 1);
    expectRefused("F0 0 F7", 4);
    expectRefused("F0 01 F", 6);
    expectRefused("0x3041", 1);
}

TEST(ImageFile, RefusesOtherBinaryFilesAtTheirFirstByte)
{
    expectRefused(hex("89504E470D0A1A0A"), 0);
    expectRefused(hex("7F454C4602010100F0"), 0);
    expectRefused(hex("00F001F7"), 0);
}

TEST(ImageFile, HoldsNoMessageInATextOfBlanksAlone)
{
    expectRefused(" \n\n", -1);
}

TEST(ImageFile, SaysWhereAMessageIsCutOffByTheEndOfTheFile)
{
    const ImageFile file = parseImageFile(hex("F001F7F00203"));
    EXPECT_EQ(messagesOf(file), QList<QByteArray>({hex("F001F7")}));
    ASSERT_EQ(file.problems.size(), 1u);
    EXPECT_EQ(imageProblemLine(file.problems[0]),
              "message 2, byte 5 of the file: the message is cut off by the end of the file, after "
              "3 bytes; expected F7. The file is damaged: get the update image again.");
}

TEST(ImageFile, SaysWhereAMessageIsCutOffByAnotherAndGoesOn)
{
    const ImageFile file = parseImageFile(hex("F001F002F7F00390F004F7"));
    EXPECT_EQ(messagesOf(file), QList<QByteArray>({hex("F002F7"), hex("F004F7")}));
    ASSERT_EQ(file.problems.size(), 2u);
    EXPECT_EQ(file.problems[0].place.message, 0);
    EXPECT_EQ(file.problems[0].place.offset, 2);
    EXPECT_EQ(file.problems[1].place.message, 2);
    EXPECT_EQ(file.problems[1].place.offset, 7);
    EXPECT_EQ(file.messages[1].number, 3);
}

TEST(ImageFile, ReportsEachRunOfBytesOutsideOfMessagesOnce)
{
    const ImageFile file = parseImageFile(hex("F001F7010203F002F70405"));
    ASSERT_EQ(file.problems.size(), 2u);
    EXPECT_EQ(file.problems[0].place.offset, 3);
    EXPECT_EQ(file.problems[0].what, "byte 01 belongs to no message; expected F0.");
    EXPECT_EQ(file.problems[1].place.offset, 9);
}

TEST(ImageFile, ReadsAFileFromDisk)
{
    TestFiles files;
    const QString path = files.write("image.syx", hex("F001F7"));
    EXPECT_EQ(messagesOf(readImageFile(path)), QList<QByteArray>({hex("F001F7")}));
}

TEST(ImageFile, RefusesAFileThatCannotBeRead)
{
    TestFiles files;
    const ImageFile file = readImageFile(files.path("nothing.syx"));
    ASSERT_EQ(file.problems.size(), 1u);
    EXPECT_TRUE(file.problems[0].what.contains(files.path("nothing.syx")));
    EXPECT_EQ(readImageFile(files.folder()).problems.size(), 1u);
}

TEST(ImageFile, RefusesAFileAboveTheLimitUnread)
{
    TestFiles files;
    QFile file(files.path("huge.syx"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(maxImageFileBytes + 1));
    const ImageFile read = readImageFile(file.fileName());
    ASSERT_EQ(read.problems.size(), 1u);
    EXPECT_TRUE(read.problems[0].what.contains("larger than 16777216 bytes"));
}

TEST(ImageFile, ListsOnlyTheFirstOfVeryManyProblems)
{
    const ImageFile file = parseImageFile(QByteArray(100000, '\xF0'));
    ASSERT_EQ(file.problems.size(), mostImageProblems);
    EXPECT_EQ(file.problems.back().what, "there are more problems than these.");
    EXPECT_FALSE(parseUpdateImage(file, samples::product()).ok());
}

TEST(ImageFile, KeepsOnlyTheFirstOfVeryManyMessages)
{
    const QByteArray message = QByteArray::fromHex("F0F7");
    const ImageFile file = parseImageFile(message.repeated(int(maxImageFileMessages) + 10));
    EXPECT_EQ(file.messages.size(), maxImageFileMessages);
    ASSERT_EQ(file.problems.size(), 1u);
    EXPECT_EQ(file.problems[0].what,
              "the file holds more than 65536 messages, which no image does.");
    EXPECT_EQ(file.problems[0].place.offset, 131072);
    EXPECT_TRUE(parseImageFile(message.repeated(int(maxImageFileMessages))).problems.empty());
}

// Opening a pipe to which nobody writes would wait for ever.
TEST(ImageFile, RefusesAPipeUnread)
{
    TestFiles files;
    const QString pipe = files.path("pipe");
    ASSERT_EQ(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    const ImageFile read = readImageFile(pipe);
    ASSERT_EQ(read.problems.size(), 1u);
    EXPECT_EQ(read.problems[0].what, pipe + " cannot be read: it is not a regular file.");
}

TEST(ImageFile, NamesItsFormats)
{
    EXPECT_EQ(imageFormatName(ImageFormat::RawSysEx), "raw SysEx");
    EXPECT_EQ(imageFormatName(ImageFormat::HexText), "hex text");
    EXPECT_EQ(imageFormatName(ImageFormat::MidiFile), "Standard MIDI File");
    EXPECT_EQ(imageFormatName(ImageFormat::Unknown), "unknown");
}
