#include "simulator/SysExReader.h"

#include "tests/simulator/UpdateMessages.h"

#include <gtest/gtest.h>

namespace hx::sim {

namespace {

QByteArray messagesIn(const QByteArray& bytes)
{
    SysExReader reader;
    QByteArray text;
    const QVector<QByteArray> messages = reader.take(bytes);
    for (const QByteArray& message : messages)
        text += (text.isEmpty() ? "" : " | ") + hexOf(message);
    return text;
}

QByteArray messagesIn(const char* hex)
{
    return messagesIn(bytesOf(hex));
}

} // namespace

TEST(SysExReader, FindsWholeMessages)
{
    EXPECT_EQ(messagesIn("F0 7E 7F 06 01 F7 F0 01 F7"), "F0 7E 7F 06 01 F7 | F0 01 F7");
    EXPECT_EQ(messagesIn("F0 F7"), "F0 F7");
}

TEST(SysExReader, SkipsRealTimeBytesInsideAMessage)
{
    EXPECT_EQ(messagesIn("F0 F8 01 FE FF 02 FA F7"), "F0 01 02 F7");
}

TEST(SysExReader, SkipsWhatIsOutsideOfMessages)
{
    EXPECT_EQ(messagesIn("00 F7 90 40 7F F8 F0 01 F7 02 F7"), "F0 01 F7");
}

TEST(SysExReader, AnotherStatusByteEndsAnUnfinishedMessage)
{
    EXPECT_EQ(messagesIn("F0 01 90 02 F7 F0 03 F7"), "F0 03 F7");
    EXPECT_EQ(messagesIn("F0 01 F6 F7"), "");
    EXPECT_EQ(messagesIn("F0 01 F0 02 F7"), "F0 02 F7");
}

TEST(SysExReader, MessagesMayArriveByteByByte)
{
    SysExReader reader;
    const QByteArray message = bytesOf("F0 01 02 03 F7");
    for (int i = 0; i + 1 < message.size(); ++i)
        EXPECT_TRUE(reader.take(message.mid(i, 1)).isEmpty()) << i;
    EXPECT_EQ(reader.pending(), 4);
    EXPECT_EQ(reader.take("\xF7"), QVector<QByteArray>({message}));
    EXPECT_EQ(reader.pending(), 0);
}

TEST(SysExReader, TheLongestMessageHas512Bytes)
{
    const QByteArray longest = '\xF0' + QByteArray(510, '\1') + '\xF7';
    EXPECT_EQ(messagesIn(longest), hexOf(longest));
    EXPECT_EQ(messagesIn('\xF0' + QByteArray(511, '\1') + '\xF7'), "");
}

TEST(SysExReader, AnEndlessMessageIsNotHeld)
{
    SysExReader reader;
    reader.take("\xF0");
    reader.take(QByteArray(10000000, '\1'));
    EXPECT_LE(reader.pending(), SysExReader::maxLength);
    EXPECT_EQ(reader.take(bytesOf("F7 F0 02 F7")), QVector<QByteArray>({bytesOf("F0 02 F7")}));
}

TEST(SysExReader, ClearForgetsAnUnfinishedMessage)
{
    SysExReader reader;
    reader.take(bytesOf("F0 01"));
    reader.clear();
    EXPECT_TRUE(reader.take(bytesOf("02 F7")).isEmpty());
}

} // namespace hx::sim
