#include "tests/mididata/Bytes.h"
#include "tests/mididata/ExtremeIntegers.h"
#include "tests/mididata/GiantBuffer.h"

#include <QDataStream>

#include <gtest/gtest.h>

namespace {

QByteArray chomped(int n)
{
    HxMidiData data = dataOf("01020304");
    data.chomp(n);
    return data.bytes;
}

QByteArray replaced(int pos, int len, const char* digits)
{
    HxMidiData data = dataOf("01020304");
    const QByteArray result = data.replace(pos, len, hex(digits));
    EXPECT_EQ(result, data.bytes);
    return result;
}

} // namespace

TEST(Editing, appendAddsTheBytesAndReturnsItself)
{
    HxMidiData data = dataOf("01");
    data.auxA = 5;
    HxMidiData other = dataOf("0203");
    other.auxA = 6;
    EXPECT_EQ(&data.append(other), &data);
    EXPECT_EQ(data.bytes, hex("010203"));
    EXPECT_EQ(data.auxA, 5u);
}

TEST(Editing, appendOfItselfDoubles)
{
    HxMidiData data = dataOf("0102");
    data.append(data);
    EXPECT_EQ(data.bytes, hex("01020102"));
}

TEST(Editing, appendOfAViewOfItsOwnStorageAddsWhatStoodThere)
{
    HxMidiData data = dataOf("01020304");
    HxMidiData view;
    view.copyFromBuffer(data.bytes.constData() + 1, 2);
    data.append(view);
    EXPECT_EQ(data.bytes, hex("010203040203"));
}

TEST(Editing, appendToAnEmptyBufferDoesNotKeepAdoptedMemory)
{
    HxMidiData data;
    {
        AdoptedBuffer adopted(hex("0102"));
        data.append(adopted.data);
    }
    EXPECT_EQ(data.bytes, hex("0102"));
}

TEST(Editing, appendWhoseSumIsLongerThanAnArrayCanBeChangesNothing)
{
    GiantBuffer giant;
    if (giant.data.bytes.isEmpty())
        GTEST_SKIP() << "1 GiB of address space is needed";
    const HxMidiData other = giant.data;
    giant.data.append(other).append(giant.data);
    EXPECT_EQ(giant.data.bytes.size(), GiantBuffer::size);
    EXPECT_EQ(giant.data.bytes.constData(), other.bytes.constData());
}

TEST(Editing, chompRemovesFromTheEnd)
{
    EXPECT_EQ(chomped(1), hex("010203"));
    EXPECT_EQ(chomped(0), hex("01020304"));
    EXPECT_EQ(chomped(-1), hex("01020304"));
    EXPECT_EQ(chomped(least), hex("01020304"));
    EXPECT_EQ(chomped(4), QByteArray());
    EXPECT_EQ(chomped(greatest), QByteArray());
}

TEST(Editing, replaceFollowsTheArraysRules)
{
    EXPECT_EQ(replaced(1, 2, "AABB"), hex("01AABB04"));
    EXPECT_EQ(replaced(1, 2, "AA"), hex("01AA04"));
    EXPECT_EQ(replaced(1, 1, "AABBCC"), hex("01AABBCC0304"));
    EXPECT_EQ(replaced(1, 0, "AA"), hex("01AA020304"));
    EXPECT_EQ(replaced(1, 2, ""), hex("0104"));
    EXPECT_EQ(replaced(2, 100, "AA"), hex("0102AA"));
    EXPECT_EQ(replaced(1, -1, "AA"), hex("01AA020304"));
    EXPECT_EQ(replaced(1, least, "AA"), hex("01AA020304"));
    EXPECT_EQ(replaced(4, 1, "AA"), hex("01020304AA"));
}

TEST(Editing, replaceBehindTheEndFillsWithBlanks)
{
    EXPECT_EQ(replaced(6, 1, "AA"), hex("010203042020AA"));
}

TEST(Editing, replaceWithANegativePositionChangesNothing)
{
    EXPECT_EQ(replaced(-1, 1, "AA"), hex("01020304"));
    EXPECT_EQ(replaced(-1, 2, "AABB"), hex("01020304"));
    EXPECT_EQ(replaced(least, greatest, "AA"), hex("01020304"));
}

TEST(Editing, replaceTakesAnyLengthAsTheArrayDoes)
{
    const auto replacedText = [](int pos, const char* with) {
        HxMidiData data(QByteArray("abcde"));
        return data.replace(pos, greatest, with);
    };
    EXPECT_EQ(replacedText(1, "XY"), QByteArray("aXY"));
    EXPECT_EQ(replacedText(0, "XY"), QByteArray("XY"));
    EXPECT_EQ(replacedText(3, ""), QByteArray("abc"));
    EXPECT_EQ(replacedText(5, "XY"), QByteArray("abcdeXY"));
    EXPECT_EQ(replacedText(7, "XY"), QByteArray("abcde  XY"));
    EXPECT_EQ(replacedText(7, ""), QByteArray("abcde"));
}

TEST(Editing, replaceWhoseResultIsLongerThanAnArrayCanBeChangesNothing)
{
    EXPECT_EQ(replaced(greatest, 0, "AA"), hex("01020304"));
    EXPECT_EQ(replaced(greatest, 1, "AA"), hex("01020304"));
    EXPECT_EQ(replaced(greatest, greatest, "AA"), hex("01020304"));
    EXPECT_EQ(replaced(greatest - 1, 0, "AA"), hex("01020304"));
    EXPECT_EQ(replaced(greatest - 1, 1, "AA"), hex("01020304"));
    EXPECT_EQ(replaced(greatest - 2, 2, "AABB"), hex("01020304"));
    EXPECT_EQ(replaced(greatest - 1, 0, ""), hex("01020304"));
}

TEST(Editing, replaceByAViewOfItsOwnStorageUsesWhatStoodThere)
{
    HxMidiData data = dataOf("01020304");
    data.replace(1, 2, QByteArray::fromRawData(data.bytes.constData(), 2));
    EXPECT_EQ(data.bytes, hex("01010204"));
    data.replace(0, 1, QByteArray::fromRawData(data.bytes.constData() + 1, 3));
    EXPECT_EQ(data.bytes, hex("010204010204"));
}

TEST(Editing, replaceByItsOwnArrayUsesACopyOfIt)
{
    HxMidiData data = dataOf("0102");
    data.replace(1, 1, data.bytes);
    EXPECT_EQ(data.bytes, hex("010102"));
}

TEST(Editing, fromRaw8bitEmptiesTheBufferWhateverItIsGiven)
{
    for (const int n : {0, 1, 7, greatest, -1, least}) {
        HxMidiData data = dataOf("0102");
        data.fromRaw8bit("abcdefgh", n);
        EXPECT_TRUE(data.bytes.isEmpty()) << n;
    }
    HxMidiData data = dataOf("0102");
    data.fromRaw8bit(nullptr, 3);
    EXPECT_TRUE(data.bytes.isEmpty());
    data = dataOf("0102");
    data.fromRaw8bit(hex("808182"));
    EXPECT_TRUE(data.bytes.isEmpty());
}

TEST(Editing, fromRaw8bitResetsWhatClearResets)
{
    HxMidiData data = dataOf("0102");
    data.auxA = 4;
    data.source = reinterpret_cast<HxMidiIn*>(&data);
    data.auxB = 5;
    data.auxC = 6;
    data.fromRaw8bit(hex("80"));
    EXPECT_EQ(data.auxA, 0u);
    EXPECT_EQ(data.source, nullptr);
    EXPECT_EQ(data.auxB, 5u);
    EXPECT_EQ(data.auxC, 6u);
}

TEST(Editing, fromRaw8bitLeavesAnEmptyArrayThatIsNotNull)
{
    HxMidiData data = dataOf("0102");
    data.fromRaw8bit(hex("80"));
    EXPECT_FALSE(data.bytes.isNull());
}
