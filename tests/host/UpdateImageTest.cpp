// An image as a whole: its messages, their order, their sums.
#include "tests/host/ImageProblems.h"
#include "tests/host/TestFiles.h"

using namespace hx;

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
        buildImage(samples::product(), "123456789", CodeType::Fwu, "1024")->messages;
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

TEST(UpdateImage, LoadsAFile)
{
    TestFiles files;
    const QString path = files.write("image.syx", samples::content(samples::messages()));
    EXPECT_TRUE(loadUpdateImage(path, samples::product()).ok());
}
