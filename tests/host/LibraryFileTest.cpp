// A library that is cut off is known by its header.
#include "host/product/LibraryFile.h"
#include "tests/host/TestFiles.h"

#include <gtest/gtest.h>

using namespace hx;

namespace {

// An ELF header of 64 bits that is followed by a table of two sections of 64 bytes.
QByteArray library64(bool isBigEndian)
{
    QByteArray bytes(64 + 128, '\0');
    bytes.replace(0, 6, QByteArray::fromHex(isBigEndian ? "7F454C460202" : "7F454C460201"));
    bytes[isBigEndian ? 47 : 40] = 64;
    bytes[isBigEndian ? 59 : 58] = 64;
    bytes[isBigEndian ? 61 : 60] = 2;
    return bytes;
}

// The same of 32 bits: 52 bytes, then a table of two sections of 40.
QByteArray library32()
{
    QByteArray bytes(52 + 80, '\0');
    bytes.replace(0, 6, QByteArray::fromHex("7F454C460101"));
    bytes[32] = 52;
    bytes[46] = 40;
    bytes[48] = 2;
    return bytes;
}

class LibraryFileSize : public testing::Test {
protected:
    bool isCut(const QByteArray& bytes) { return isCutOff(files.write("library", bytes)); }

    TestFiles files;
};

} // namespace

TEST_F(LibraryFileSize, AnyByteThatIsMissingIsNoticed)
{
    for (const QByteArray& whole : {library64(false), library64(true), library32()}) {
        EXPECT_FALSE(isCut(whole));
        for (int length = 4; length < whole.size(); ++length)
            ASSERT_TRUE(isCut(whole.left(length))) << length;
    }
}

TEST_F(LibraryFileSize, ATableFarBeyondTheFileIsNoticed)
{
    QByteArray bytes = library64(false);
    bytes.replace(40, 8, QByteArray(8, '\xFF'));
    EXPECT_TRUE(isCut(bytes));
}

TEST_F(LibraryFileSize, WithoutATableNothingIsKnown)
{
    QByteArray bytes = library64(false).left(70);
    bytes.replace(40, 24, QByteArray(24, '\0'));
    EXPECT_FALSE(isCut(bytes));
}

TEST_F(LibraryFileSize, OfOtherFilesNothingIsKnown)
{
    EXPECT_FALSE(isCut(QByteArray()));
    EXPECT_FALSE(isCut("MZ"));
    EXPECT_FALSE(isCutOff(files.path("nothing")));
}
