// The fields of an image's messages: addresses, counts, lengths, and what the file check states.
#include "tests/host/ImageProblems.h"

using namespace hx;

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
            buildImage(samples::product(), "abc", CodeType::Fwu, "1024")->messages;
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
