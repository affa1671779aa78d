#include "tests/mididata/Bytes.h"

#include <QDataStream>
#include <QIODevice>

#include <gtest/gtest.h>

namespace {

QByteArray streamed(const HxMidiData& data)
{
    QByteArray form;
    QDataStream stream(&form, QIODevice::WriteOnly);
    QDataStream& returned = stream << data;
    EXPECT_EQ(&returned, &stream);
    return form;
}

HxMidiData read(const QByteArray& form, HxMidiData into)
{
    QDataStream stream(form);
    QDataStream& returned = stream >> into;
    EXPECT_EQ(&returned, &stream);
    return into;
}

} // namespace

TEST(Stream, theFormIsALengthAndTheBytes)
{
    EXPECT_EQ(streamed(dataOf("0102")), hex("000000020102"));
}

TEST(Stream, nullAndEmptyArraysDiffer)
{
    EXPECT_EQ(streamed(HxMidiData()), hex("FFFFFFFF"));
    EXPECT_EQ(streamed(HxMidiData(QByteArray(""))), hex("00000000"));
}

TEST(Stream, readingRestoresTheBytesAndKeepsTheOtherMembers)
{
    HxMidiData target(hex("FF"));
    target.auxA = 1;
    target.source = reinterpret_cast<HxMidiIn*>(&target);
    target.auxB = 2;
    target.auxC = 3;
    const HxMidiData result = read(streamed(dataOf("0102")), target);
    EXPECT_EQ(result.bytes, hex("0102"));
    EXPECT_EQ(result.auxA, 1u);
    EXPECT_EQ(result.source, target.source);
    EXPECT_EQ(result.auxB, 2u);
    EXPECT_EQ(result.auxC, 3u);
}

TEST(Stream, theByteOrderIsTheStreams)
{
    QByteArray form;
    QDataStream stream(&form, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << dataOf("0102");
    EXPECT_EQ(form, hex("020000000102"));
}

TEST(Stream, aTruncatedFormGivesAnEmptyBuffer)
{
    EXPECT_TRUE(read(hex("00000003"), dataOf("AA")).bytes.isEmpty());
}
