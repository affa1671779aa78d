#include "host/image/UpdateImage.h"

#include "tests/host/ImageSamples.h"
#include "tests/host/TestFiles.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

using namespace hx;

namespace {

QStringList linesOf(const UpdateImage& image)
{
    QStringList lines;
    for (const Problem& problem : image.problems)
        lines << imageProblemLine(problem);
    return lines;
}

UpdateImage parsed(const QList<HxMidiData>& messages)
{
    return parseUpdateImage(imageFileOf(messages), samples::product());
}

// Expects one problem with these contents at this place.
void expectProblem(const UpdateImage& image, int message, qint64 offset, const char* text)
{
    ASSERT_EQ(image.problems.size(), 1u) << linesOf(image).join("\n").toStdString();
    EXPECT_EQ(image.problems[0].place.message, message);
    EXPECT_EQ(image.problems[0].place.offset, offset);
    EXPECT_EQ(image.problems[0].what, text);
    EXPECT_FALSE(image.problems[0].next.isEmpty());
    EXPECT_FALSE(image.ok());
}

constexpr int dataBytes = 146; // of a full data message

} // namespace

TEST(UpdateImage, ReadsAGoodImage)
{
    const UpdateImage image = samples::image(300);
    EXPECT_TRUE(image.ok()) << linesOf(image).join("\n").toStdString();
    EXPECT_EQ(image.kind, CodeType::Fwu);
    EXPECT_EQ(image.messages.size(), 5);
    EXPECT_EQ(image.dataMessages, 3);
    EXPECT_EQ(image.code, samples::code(300));
    EXPECT_EQ(image.statedLength, 300);
    EXPECT_EQ(image.version, "1.0.2.4");
    EXPECT_EQ(image.bytes, 2 * dataBytes + (16 + 76 + 11 + 2) + 25 + 7);
    EXPECT_EQ(image.wireMicroseconds(), image.bytes * 320);
}

TEST(UpdateImage, ReadsEverySizeOfCodeBackAsItWas)
{
    for (int size = 1; size <= 240; ++size) {
        const UpdateImage image =
            samples::image(size, size % 2 == 0 ? CodeType::Fwu : CodeType::Fwd);
        EXPECT_TRUE(image.ok()) << size << linesOf(image).join("\n").toStdString();
        EXPECT_EQ(image.code, samples::code(size));
        EXPECT_EQ(image.kind, size % 2 == 0 ? CodeType::Fwu : CodeType::Fwd);
    }
}

TEST(UpdateImage, ReadsTheLargestImage)
{
    const UpdateImage image = samples::image(1048576);
    EXPECT_TRUE(image.ok()) << linesOf(image).join("\n").toStdString();
    EXPECT_EQ(image.dataMessages, 9363);
}

TEST(UpdateImage, ExpectsTheChecksumOfItsCode)
{
    const QList<HxMidiData> messages =
        buildImage(samples::product(), "123456789", CodeType::Fwu, "1024").messages;
    EXPECT_EQ(parsed(messages).expectedChecksum(), QByteArray::fromHex("5F507226"));
}

TEST(UpdateImage, RefusesAnEmptyList)
{
    expectProblem(parsed({}), -1, -1, "the image is empty: it has no message.");
}

TEST(UpdateImage, RefusesAFileThatIsNoSysEx)
{
    const UpdateImage image = parseUpdateImage(parseImageFile("Hello, world"), samples::product());
    expectProblem(
        image, -1, 0,
        "the file is not SysEx: byte 48 belongs to no message; expected F0, hex text or a "
        "Standard MIDI File.");
}

TEST(UpdateImage, RefusesEveryTruncationAndNamesMessageAndByte)
{
    const QByteArray content = samples::content(samples::messages());
    for (int size = 1; size < content.size(); ++size) {
        const UpdateImage image =
            parseUpdateImage(parseImageFile(content.left(size)), samples::product());
        ASSERT_FALSE(image.ok()) << size;
        ASSERT_GE(image.problems.back().place.message, 0) << size;
        ASSERT_GE(image.problems.back().place.offset, 0) << size;
        ASSERT_LT(image.problems.back().place.offset, size);
        ASSERT_FALSE(image.problems.back().next.isEmpty());
    }
}

TEST(UpdateImage, RefusesEveryFlippedBitAndNamesMessageAndByte)
{
    const QByteArray content = samples::content(samples::messages());
    for (int bit = 0; bit < content.size() * 8; ++bit) {
        QByteArray damaged = content;
        damaged[bit / 8] = static_cast<char>(damaged.at(bit / 8) ^ (1 << (bit % 8)));
        const UpdateImage image = parseUpdateImage(parseImageFile(damaged), samples::product());
        ASSERT_FALSE(image.ok()) << bit;
        const Problem& problem = image.problems.front();
        ASSERT_TRUE(problem.place.message >= 0 || bit < 8)
            << imageProblemLine(problem).toStdString();
        ASSERT_GE(problem.place.offset, 0) << bit;
        ASSERT_FALSE(problem.next.isEmpty());
    }
}

TEST(UpdateImage, NamesTheMessageWhoseSumIsWrong)
{
    QList<HxMidiData> messages = samples::messages();
    messages[1].bytes[20] = static_cast<char>(messages.at(1).bytes.at(20) ^ 1);
    const UpdateImage image = parsed(messages);
    ASSERT_EQ(image.problems.size(), 1u) << linesOf(image).join("\n").toStdString();
    EXPECT_EQ(image.problems[0].place.message, 1);
    EXPECT_EQ(image.problems[0].place.offset, dataBytes + 144);
    EXPECT_TRUE(image.problems[0].what.endsWith("a byte from 154 on is wrong."))
        << image.problems[0].what.toStdString();
}

TEST(UpdateImage, FindsDamageThatTheSumsDoNotShow)
{
    QList<HxMidiData> messages = samples::messages();
    QByteArray& bytes = messages[1].bytes;
    ASSERT_LT(bytes.at(20), 0x7F);
    ASSERT_GT(bytes.at(21), 0);
    bytes[20] = static_cast<char>(bytes.at(20) + 1);
    bytes[21] = static_cast<char>(bytes.at(21) - 1);
    const UpdateImage image = parsed(messages);
    ASSERT_EQ(image.problems.size(), 1u);
    EXPECT_EQ(image.problems[0].place.message, 3);
    EXPECT_TRUE(image.problems[0].what.startsWith("the file check states the CRC-32 "));
}

TEST(UpdateImage, RefusesAChecksumThatIsOneTooLargeOrTooSmall)
{
    for (int difference : {1, -1}) {
        QList<HxMidiData> messages = samples::messages();
        const int last = messages.at(3).bytes.at(17) + difference;
        ASSERT_TRUE(last >= 0 && last <= 0x7F);
        messages[3].bytes[17] = static_cast<char>(last);
        messages[3] = samples::resummed(messages.at(3));
        const UpdateImage image = parsed(messages);
        ASSERT_EQ(image.problems.size(), 1u);
        EXPECT_EQ(image.problems[0].place.message, 3);
        EXPECT_TRUE(image.problems[0].what.startsWith("the file check states the CRC-32 "));
    }
}

TEST(UpdateImage, RefusesAMissingMessage)
{
    QList<HxMidiData> messages = samples::messages();
    messages.removeAt(1);
    expectProblem(parsed(messages), 1, dataBytes + 8,
                  "data message number 2 is where number 1 should be: number 1 is missing.");
}

TEST(UpdateImage, RefusesSeveralMissingMessages)
{
    QList<HxMidiData> messages = samples::messages(600);
    messages.erase(messages.begin() + 1, messages.begin() + 4);
    expectProblem(parsed(messages), 1, dataBytes + 8,
                  "data message number 4 is where number 1 should be: numbers 1 to 3 are missing.");
}

TEST(UpdateImage, RefusesAMissingFirstMessage)
{
    expectProblem(parsed(samples::messages().mid(1)), 0, 8,
                  "data message number 1 is where number 0 should be: number 0 is missing.");
}

TEST(UpdateImage, RefusesAWrongOrder)
{
    QList<HxMidiData> messages = samples::messages(560);
    std::swap(messages[1], messages[2]);
    const UpdateImage image = parsed(messages);
    ASSERT_EQ(image.problems.size(), 3u) << linesOf(image).join("\n").toStdString();
    EXPECT_EQ(image.problems[1].what,
              "data message number 1 comes after number 2: the order is wrong.");
}

TEST(UpdateImage, RefusesAMessageThatStandsTwice)
{
    QList<HxMidiData> messages = samples::messages();
    messages.insert(1, messages.at(0));
    const UpdateImage image = parsed(messages);
    ASSERT_FALSE(image.ok());
    EXPECT_EQ(image.problems[0].what,
              "data message number 0 comes after number 0: the order is wrong.");
}

TEST(UpdateImage, RefusesAnImageWithoutFileCheckOrClosingMessage)
{
    QList<HxMidiData> messages = samples::messages();
    EXPECT_EQ(linesOf(parsed(messages.mid(0, 4))),
              QStringList({"message 4, byte 421 of the file: the image ends without the closing "
                           "message F0 00 6B 2D 30 41 F7. The file is incomplete: get the update "
                           "image again."}));
    EXPECT_EQ(parsed(messages.mid(0, 3)).problems.size(), 2u);
    messages.removeAt(3);
    expectProblem(parsed(messages), 3, 403, "the image ends without a file check.");
}

TEST(UpdateImage, RefusesAnImageWithoutDataMessages)
{
    const UpdateImage image = parsed(samples::messages().mid(3));
    ASSERT_EQ(image.problems.size(), 1u) << linesOf(image).join("\n").toStdString();
    EXPECT_EQ(image.problems[0].what, "the image has no data message.");
}

TEST(UpdateImage, RefusesTheImageOfAnotherModel)
{
    QList<HxMidiData> messages = samples::messages();
    for (HxMidiData& message : messages)
        message.bytes[5] = 0x42;
    const UpdateImage image = parsed(messages);
    EXPECT_EQ(linesOf(image),
              QStringList({"message 1, byte 5 of the file: it begins with F0 00 6B 2D 30 42; "
                           "expected F0 00 6B 2D 30 41. 4 more messages have another head too. It "
                           "is made for another product: get the image for this one."}));
}

TEST(UpdateImage, RefusesTheImageOfAnotherMaker)
{
    QList<HxMidiData> messages = samples::messages();
    for (HxMidiData& message : messages)
        message.bytes[1] = 0x41;
    const UpdateImage image = parsed(messages);
    ASSERT_FALSE(image.ok());
    EXPECT_EQ(image.problems[0].place.offset, 1);
}

TEST(UpdateImage, RefusesMessagesOfBothKinds)
{
    QList<HxMidiData> messages = samples::messages();
    messages[1].bytes[6] = 0x42;
    expectProblem(parsed(messages), 1, dataBytes + 6,
                  "its kind is \"fwd\", that of the messages before \"fwu\".");
}

TEST(UpdateImage, RefusesAnUnknownKind)
{
    QList<HxMidiData> messages = samples::messages();
    messages[0].bytes[6] = 0x44;
    expectProblem(parsed(messages), 0, 6, "its kind is 44; expected 43 (fwu) or 42 (fwd).");
}

TEST(UpdateImage, RefusesAMessageThatNoImageHas)
{
    QList<HxMidiData> messages = samples::messages();
    messages[1].bytes[7] = 0x0B;
    const UpdateImage image = parsed(messages);
    EXPECT_TRUE(image.problems[0].what.startsWith(
        "it is neither a data message nor a file check nor the "));
    EXPECT_EQ(image.problems[0].place.offset, dataBytes + 7);
}

TEST(UpdateImage, RefusesMessagesBehindTheClosingMessage)
{
    QList<HxMidiData> messages = samples::messages();
    messages << messages.last();
    expectProblem(parsed(messages), 5, 429, "it comes after the closing message.");
}

TEST(UpdateImage, RefusesDataBehindTheFileCheck)
{
    QList<HxMidiData> messages = samples::messages();
    messages.move(3, 2);
    const UpdateImage image = parsed(messages);
    EXPECT_EQ(image.problems[0].what,
              "it comes after the file check; expected the closing message.");
}

TEST(UpdateImage, RefusesAGapInTheAddresses)
{
    QList<HxMidiData> messages = samples::messages();
    messages[2].bytes[14] = static_cast<char>(messages.at(2).bytes.at(14) ^ 1);
    messages[2] = samples::resummed(messages.at(2));
    expectProblem(parsed(messages), 2, 2 * dataBytes + 10,
                  "its code belongs to address 225; expected 224.");
}

TEST(UpdateImage, RefusesAShortMessageInTheMiddle)
{
    for (int count : {100, 111}) {
        const QList<HxMidiData> tail = samples::messages(112);
        QList<HxMidiData> messages = samples::messages(count).mid(0, 1);
        HxMidiData second = tail.at(0);
        second.bytes[9] = 1;
        second.bytes[14] = static_cast<char>(count);
        messages << samples::resummed(second) << tail.mid(1);
        EXPECT_EQ(parsed(messages).problems[0].what,
                  QString("it carries %1 code bytes; every data message but the last carries 112.")
                      .arg(count));
    }
}

TEST(UpdateImage, RefusesACountThatDoesNotFitTheLength)
{
    QList<HxMidiData> messages = samples::messages();
    messages[1].bytes[15] = 0x6F;
    messages[1] = samples::resummed(messages.at(1));
    expectProblem(parsed(messages), 1, 2 * dataBytes - 1,
                  "it has 146 bytes; expected 145 for the 111 code bytes it states.");
}

TEST(UpdateImage, RefusesACountOfZeroOrAbove112)
{
    for (char count : {'\x00', '\x71', '\x7F'}) {
        QList<HxMidiData> messages = samples::messages();
        messages[1].bytes[15] = count;
        messages[1] = samples::resummed(messages.at(1));
        const UpdateImage image = parsed(messages);
        ASSERT_EQ(image.problems.size(), 1u);
        EXPECT_EQ(image.problems[0].place.offset, dataBytes + 15);
    }
}

TEST(UpdateImage, RefusesTopBitsOfBytesThatAreNotThere)
{
    for (int bit = 0; bit <= 3; ++bit) { // bit 3 belongs to a fourth byte
        QList<HxMidiData> messages =
            buildImage(samples::product(), "abc", CodeType::Fwu, "1024").messages;
        messages[0].bytes[16] = static_cast<char>(1 << bit);
        messages[0] = samples::resummed(messages.at(0));
        expectProblem(parsed(messages), 0, 16,
                      "its last header byte has a bit for a code byte that is not there.");
    }
}

TEST(UpdateImage, RefusesAFileCheckThatStatesAnotherLength)
{
    QList<HxMidiData> messages = samples::messages();
    messages[3].bytes[12] = static_cast<char>(messages.at(3).bytes.at(12) ^ 1);
    messages[3] = samples::resummed(messages.at(3));
    expectProblem(parsed(messages), 3, 397 + 8,
                  "the file check states 301 code bytes, but the messages carry 300.");
}

TEST(UpdateImage, BitsAboveThe32OfANumberAreNotLost)
{
    QList<HxMidiData> messages = samples::messages();
    messages[3].bytes[13] = static_cast<char>(messages.at(3).bytes.at(13) | 0x40);
    messages[3] = samples::resummed(messages.at(3));
    const QString first = QString::number(messages.at(3).bytes.at(13), 16).toUpper();
    expectProblem(parsed(messages), 3, 397 + 13,
                  qPrintable(QStringLiteral("the CRC begins with %1; expected 0F at most, for 32 "
                                            "bits.")
                                 .arg(first)));

    messages = samples::messages();
    messages[3].bytes[8] = 0x10;
    messages[3] = samples::resummed(messages.at(3));
    expectProblem(parsed(messages), 3, 397 + 8,
                  "the file check states 4294967596 code bytes, but the messages carry 300.");

    messages = samples::messages();
    messages[2].bytes[10] = 0x10;
    messages[2] = samples::resummed(messages.at(2));
    expectProblem(parsed(messages), 2, 2 * dataBytes + 10,
                  "its code belongs to address 4294967520; expected 224.");
}

TEST(UpdateImage, RefusesAFileCheckOfAnotherLayoutOrVersionForm)
{
    QList<HxMidiData> messages = samples::messages();
    messages[3].bytes[22] = 0x02;
    messages[3] = samples::resummed(messages.at(3));
    expectProblem(parsed(messages), 3, 397 + 22, "the layout is 02; expected 01.");

    messages = samples::messages();
    messages[3].bytes[19] = 'x';
    messages[3] = samples::resummed(messages.at(3));
    expectProblem(parsed(messages), 3, 397 + 19, "the version byte 78 is not an ASCII digit.");
}

TEST(UpdateImage, RefusesAFileCheckOfAnotherSize)
{
    QList<HxMidiData> messages = samples::messages();
    messages[3].bytes.remove(10, 1);
    expectProblem(parsed(messages), 3, 397 + 23, "the file check has 24 bytes; expected 25.");
}

TEST(UpdateImage, NamesAllProblemsAtOnce)
{
    QList<HxMidiData> messages = samples::messages(600);
    messages[1].bytes[30] = static_cast<char>(messages.at(1).bytes.at(30) ^ 4);
    messages[2].bytes[5] = 0x42;
    messages.removeAt(4);
    messages.removeLast();
    const UpdateImage image = parsed(messages);
    EXPECT_EQ(image.problems.size(), 4u) << linesOf(image).join("\n").toStdString();
}

TEST(UpdateImage, RefusesADataMessageThatIsTooShort)
{
    QList<HxMidiData> messages = samples::messages();
    messages[1] = HxMidiData(messages.at(1).bytes.left(17) + '\xF7');
    EXPECT_EQ(
        linesOf(parsed(messages)).first(),
        "message 2, byte 163 of the file: the data message has 18 bytes; expected 20 at least. "
        "The file is damaged: get the update image again.");
}

TEST(UpdateImage, RefusesMoreCodeThanTheProductHolds)
{
    QList<HxMidiData> messages = samples::messages(1048576);
    HxMidiData full = samples::messages(112).first();
    constexpr int last = 9362;
    full.set14bit(8, last);
    HxMidiData address;
    address.setData("UT", static_cast<unsigned>(last * 112));
    full.bytes.replace(10, 5, address.bytes);
    messages[last] = samples::resummed(full);
    const QStringList lines = linesOf(parsed(messages));
    EXPECT_TRUE(lines.first().startsWith("the image carries 1048656 code bytes; the product holds "
                                         "1048576."))
        << lines.join("\n").toStdString();
}

TEST(UpdateImage, LoadsAFile)
{
    TestFiles files;
    const QString path = files.write("image.syx", samples::content(samples::messages()));
    EXPECT_TRUE(loadUpdateImage(path, samples::product()).ok());
}
