#include "simulator/WireFormat.h"

#include "simulator/Crc32.h"

#include "tests/simulator/UpdateMessages.h"

#include <gtest/gtest.h>

namespace hx::sim {

namespace {

QByteArray unpacked(const char* hex)
{
    QByteArray code;
    return unpack(bytesOf(hex), &code) ? hexOf(code) : QByteArray("refused");
}

} // namespace

TEST(WireFormat, GroupsAreReadMostSignificantFirst)
{
    EXPECT_EQ(readGroups(bytesOf("F0 0C5F507226 F7"), 1, 5), 0xCBF43926u);
    EXPECT_EQ(readGroups(bytesOf("0102"), 0, 2), 130u);
    EXPECT_EQ(readGroups(bytesOf("7F7F7F7F7F"), 0, 5), 0x7FFFFFFFFu);
}

TEST(WireFormat, GroupsKeepTheLowBits)
{
    EXPECT_EQ(hexOf(writeGroups(0xCBF43926, 4)), "5F 50 72 26");
    EXPECT_EQ(hexOf(writeGroups(1023, 2)), "07 7F");
    EXPECT_EQ(hexOf(writeGroups(0, 5)), "00 00 00 00 00");
}

TEST(WireFormat, SumWrapsIn7Bits)
{
    EXPECT_EQ(sum7(bytesOf("7F7F02"), 0, 3), 0u);
    EXPECT_EQ(sum7(bytesOf("F0010203F7"), 1, 4), 6u);
    EXPECT_EQ(sum7(bytesOf("F0"), 1, 1), 0u);
}

TEST(WireFormat, UnpacksTheTopBitsFromTheHeader)
{
    EXPECT_EQ(unpacked("50 70 7E 01"), "F0 7E 81");
    EXPECT_EQ(unpacked("7F 00 01 02 03 04 05 06  40 7F"), "80 81 82 83 84 85 86 FF");
    EXPECT_EQ(unpacked(""), "");
}

TEST(WireFormat, HeaderBitsWithoutAByteAreRefused)
{
    EXPECT_EQ(unpacked("51 70 7E 01"), "refused");
    EXPECT_EQ(unpacked("00 00 00 00 00 00 00 00  20 7F"), "refused");
    EXPECT_EQ(unpacked("40"), "refused");
}

TEST(WireFormat, PackedSizeCountsTheHeaders)
{
    EXPECT_EQ(packedSize(1), 2);
    EXPECT_EQ(packedSize(7), 8);
    EXPECT_EQ(packedSize(8), 10);
    EXPECT_EQ(packedSize(112), 128);
}

TEST(ProductCrc32, HasThePublishedCheckValue)
{
    EXPECT_EQ(productCrc32("123456789"), 0xCBF43926u);
    EXPECT_EQ(productCrc32(QByteArray()), 0u);
    EXPECT_EQ(productCrc32(QByteArray(1, '\0')), 0xD202EF8Du);
}

} // namespace hx::sim
