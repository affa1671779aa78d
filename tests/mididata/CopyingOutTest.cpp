#include "tests/mididata/Bytes.h"
#include "tests/mididata/ExtremeIntegers.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Vector = std::vector<unsigned char>;

Vector copied(int start, int count)
{
    Vector out = {0xAA, 0xBB};
    dataOf("01020304").copyToStdVec(out, start, count);
    return out;
}

QByteArray mirrored(int start, int count)
{
    QByteArray buffer = hex("AAAAAAAA");
    dataOf("01020304").copyToBuffer(buffer.data(), start, count);
    return buffer;
}

} // namespace

TEST(CopyingOut, aVectorReceivesTheSection)
{
    EXPECT_EQ(copied(0, -1), Vector({1, 2, 3, 4}));
    EXPECT_EQ(copied(1, 2), Vector({2, 3}));
    EXPECT_EQ(copied(2, -1), Vector({3, 4}));
    EXPECT_EQ(copied(2, greatest), Vector({3, 4}));
}

TEST(CopyingOut, aVectorIsEmptiedWhenNothingIsCopied)
{
    EXPECT_EQ(copied(0, 0), Vector());
    EXPECT_EQ(copied(4, 1), Vector());
    EXPECT_EQ(copied(greatest, greatest), Vector());
    EXPECT_EQ(copied(0, -2), Vector());
    EXPECT_EQ(copied(0, least), Vector());
}

TEST(CopyingOut, aNegativeStartCopiesNothing)
{
    EXPECT_EQ(copied(-1, 2), Vector());
    EXPECT_EQ(copied(least, -1), Vector());
    EXPECT_EQ(dataOf("0102").toStdVector(-1, -1), Vector());
    EXPECT_EQ(mirrored(-1, 2), hex("AAAAAAAA"));
    EXPECT_EQ(mirrored(least, greatest), hex("AAAAAAAA"));
}

TEST(CopyingOut, toStdVectorReturnsTheSame)
{
    EXPECT_EQ(dataOf("01020304").toStdVector(1, 2), Vector({2, 3}));
    EXPECT_EQ(HxMidiData().toStdVector(0, -1), Vector());
}

TEST(CopyingOut, copyToBufferWritesToTheSameIndexes)
{
    EXPECT_EQ(mirrored(2, 2), hex("AAAA0304"));
    EXPECT_EQ(mirrored(0, -1), hex("01020304"));
    EXPECT_EQ(mirrored(1, 1), hex("AA02AAAA"));
    EXPECT_EQ(mirrored(3, greatest), hex("AAAAAA04"));
}

TEST(CopyingOut, copyToBufferCopiesNothingOutsideTheSource)
{
    EXPECT_EQ(mirrored(0, 0), hex("AAAAAAAA"));
    EXPECT_EQ(mirrored(4, 1), hex("AAAAAAAA"));
    EXPECT_EQ(mirrored(greatest, -1), hex("AAAAAAAA"));
    dataOf("0102").copyToBuffer(nullptr, 0, -1);
}
