// Hex text as editors save it: with byte-order marks, in two bytes a character.
#include "host/image/ImageFile.h"
#include "tests/host/Bytes.h"
#include "tests/host/ImageSamples.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

using namespace hx;

namespace {

QByteArray wide(const QByteArray& text, bool bigEndian)
{
    QByteArray bytes;
    for (const char character : text)
        bytes += bigEndian ? QByteArray(1, '\0') + character : character + QByteArray(1, '\0');
    return bytes;
}

const QByteArray twoMessages = "F0 01 F7\r\nF0,02 f7\r\n";
const QList<QByteArray> inText = {hex("F001F7"), hex("F002F7")};

void expectRead(const QByteArray& content, qint64 offsetOfSecond)
{
    const ImageFile file = parseImageFile(content);
    EXPECT_EQ(file.format, ImageFormat::HexText);
    EXPECT_TRUE(file.problems.empty()) << imageProblemLine(file.problems.front()).toStdString();
    ASSERT_EQ(messagesOf(file), inText);
    EXPECT_EQ(file.messages[1].offsetOf(0), offsetOfSecond);
}

void expectRefusedAt(const QByteArray& content, qint64 offset)
{
    const ImageFile file = parseImageFile(content);
    ASSERT_FALSE(file.problems.empty());
    EXPECT_EQ(file.problems[0].place.offset, offset);
    EXPECT_TRUE(file.messages.empty());
}

} // namespace

TEST(FileText, HexTextIsReadInEveryEncodingThatEditorsWrite)
{
    expectRead(twoMessages, 10);
    expectRead("\xEF\xBB\xBF" + twoMessages, 13);
    expectRead("\xFF\xFE" + wide(twoMessages, false), 22);
    expectRead("\xFE\xFF" + wide(twoMessages, true), 22);
    expectRead(wide(twoMessages, false), 20);
    expectRead(wide(twoMessages, true), 20);
}

TEST(FileText, WhatIsNotHexTextIsRefusedAtItsPlace)
{
    expectRefusedAt("\xEF\xBB\xBF"
                    "F0 0G F7",
                    7);
    expectRefusedAt("\xFF\xFE" + wide("F0 0G F7", false), 10);
    expectRefusedAt("\xFE\xFF" + wide("F0 01 F", true), 14);
    expectRefusedAt("\xFF\xFE" + wide("F0 01 F7", false) + 'F', 18); // half a character
    expectRefusedAt("\xFF\xFE" + QByteArray("F\x01"
                                            "0\0",
                                            4),
                    2); // not a digit, but like one
    expectRefusedAt("\xEF\xBB\xBF"
                    "F0 01\xC2\xA0"
                    "F7",
                    8);
}

TEST(FileText, AMarkAloneHoldsNoMessage)
{
    for (const char* mark : {"\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"})
        expectRefusedAt(mark, -1);
}

TEST(FileText, RawBytesAreNotTakenForText)
{
    EXPECT_EQ(parseImageFile(hex("F00001F7")).format, ImageFormat::RawSysEx);
    EXPECT_EQ(parseImageFile(hex("F0F7")).format, ImageFormat::RawSysEx);
}
