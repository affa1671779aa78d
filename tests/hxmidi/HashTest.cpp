#include "tests/hxmidi/CommandRun.h"

#include <gtest/gtest.h>

TEST(Hash, IsSixteenDigits)
{
    EXPECT_EQ(hxmidi({"hash", ""}).out, "0000000000000000\n");
    EXPECT_EQ(hxmidi({"hash", "01"}).out, "0000000000000001\n");
    EXPECT_EQ(hxmidi({"hash", "FF"}).out, "FFFFFFFFFFFFFFFF\n"); // a byte of 80 and above is signed
    // 1 * (63689 * 378551 modulo 2^32) + 2
    EXPECT_EQ(hxmidi({"hash", "0102"}).out, "000000009D0A4DB1\n");
}

TEST(Hash, IsTextInJson)
{
    const QJsonObject expected{{QStringLiteral("hash"), QStringLiteral("0000000000000001")},
                               {QStringLiteral("size"), 1}};
    EXPECT_EQ(hxmidi({"hash", "--json", "01"}).json().value(QStringLiteral("result")), expected);
}
