#include "tests/mididata/Bytes.h"

#include <gtest/gtest.h>

namespace {

int channel(const char* digits, unsigned char fallback)
{
    return HxMidiData::detectMidiCh(dataOf(digits), fallback);
}

} // namespace

TEST(Channel, ofAUniversalMessageIsItsThirdByte)
{
    EXPECT_EQ(channel("F07E050601F7", 9), 5);
    EXPECT_EQ(channel("F07E7F0601F7", 9), 15);
    EXPECT_EQ(channel("F07E05", 9), 5);
}

TEST(Channel, ofFewerThanThreeBytesIsTheStatusNibble)
{
    EXPECT_EQ(channel("9340", 0), 3);
    EXPECT_EQ(channel("C5", 0), 5);
    EXPECT_EQ(channel("C57E", 9), 5);
}

TEST(Channel, ofALongerChannelMessageIsTheFallback)
{
    EXPECT_EQ(channel("93407F", 0), 0);
    EXPECT_EQ(channel("B00764", 9), 9);
    EXPECT_EQ(channel("F0007E", 200), 200);
}

TEST(Channel, ofNothingIsZero)
{
    EXPECT_EQ(channel("", 9), 0);
}
