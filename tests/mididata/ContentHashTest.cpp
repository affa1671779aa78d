#include "tests/mididata/Bytes.h"

#include <gtest/gtest.h>

TEST(ContentHash, ofNothingIsZero)
{
    EXPECT_EQ(HxMidiData().hash(), 0u);
}

TEST(ContentHash, ofOneByteIsItsSignedValue)
{
    EXPECT_EQ(dataOf("01").hash(), 1u);
    EXPECT_EQ(dataOf("7F").hash(), 127u);
    EXPECT_EQ(dataOf("FF").hash(), 0xFFFFFFFFFFFFFFFFu);
    EXPECT_EQ(dataOf("80").hash(), 0xFFFFFFFFFFFFFF80u);
}

TEST(ContentHash, laterBytesMultiplyWithAMultiplierThatWrapsAt32Bits)
{
    // Second multiplier: 63689 * 378551 mod 2^32 = 2634698159; third: that * 378551 mod 2^32.
    EXPECT_EQ(dataOf("0102").hash(), 1u * 2634698159u + 2u);
    EXPECT_EQ(dataOf("010203").hash(), (Q_UINT64_C(2634698159) + 2) * 3202212377u + 3u);
}

TEST(ContentHash, dependsOnTheOrderOfTheBytes)
{
    EXPECT_NE(dataOf("0102").hash(), dataOf("0201").hash());
}
