#include "tests/mididata/Bytes.h"

#include <gtest/gtest.h>

namespace {

/** What cvt8to7() writes, from and into memory of exactly the right size. */
QByteArray packed(const char* digits)
{
    const AdoptedBuffer adopted(hex(digits));
    const QByteArray& source = adopted.data.bytes;
    const auto n = static_cast<unsigned int>(source.size());
    const unsigned int length = n + (n + 6) / 7;
    std::unique_ptr<char[]> room(new char[length]);
    EXPECT_EQ(HxMidiData().cvt8to7(room.get(), source.constData(), n), length);
    return QByteArray(room.get(), static_cast<int>(length));
}

} // namespace

TEST(Packing, sevenBytesFollowTheByteOfTheirTopBits)
{
    EXPECT_EQ(packed("80010203040506FF"), hex("4000010203040506 407F"));
    EXPECT_EQ(packed("80808080808080"), hex("7F00000000000000"));
    EXPECT_EQ(packed("01020304050687"), hex("0101020304050607"));
}

TEST(Packing, aShortGroupUsesTheUpperBits)
{
    EXPECT_EQ(packed("FF"), hex("407F"));
    EXPECT_EQ(packed("00FF"), hex("20007F"));
    EXPECT_EQ(packed("000000000000FF"), hex("010000000000007F"));
}

TEST(Packing, ofNothingWritesNothing)
{
    EXPECT_EQ(packed(""), QByteArray());
    EXPECT_EQ(HxMidiData().cvt8to7(nullptr, nullptr, 0), 0u);
}

TEST(Packing, ofANullPointerWritesNothing)
{
    char room[] = {'\x55', '\x55'};
    EXPECT_EQ(HxMidiData().cvt8to7(room, nullptr, 1), 0u);
    EXPECT_EQ(HxMidiData().cvt8to7(nullptr, room, 1), 0u);
    EXPECT_EQ(room[0], '\x55');
}
