// What people take for an update image, told by its first bytes.
#include "host/image/ForeignFile.h"

#include <gtest/gtest.h>

using namespace hx;

TEST(ForeignFile, ArchivesAreToldByTheirMarks)
{
    for (const char* mark : {"504B0304", "504B0506", "1F8B08", "425A68", "FD377A585A",
                             "377ABCAF271C", "526172211A", "28B52FFD", "4D534346"})
        EXPECT_EQ(foreignFormat(QByteArray::fromHex(mark) + "more"), ImageFormat::Archive) << mark;
    EXPECT_EQ(foreignFormat(QByteArray(257, 'n') + "ustar"), ImageFormat::Archive);
    EXPECT_EQ(foreignFormat(QByteArray(256, 'n') + "ustar"), ImageFormat::Unknown);
}

TEST(ForeignFile, WebPagesAreToldByTheirFirstTag)
{
    for (const char* page : {"<!DOCTYPE html>", "\n <HTML lang=\"en\">", "<!-- saved --><html>",
                             "<?xml version=\"1.0\"?><head>"})
        EXPECT_EQ(foreignFormat(page), ImageFormat::WebPage) << page;
}

TEST(ForeignFile, WebPagesAreToldInEveryEncodingThatTheyAreSavedIn)
{
    const QByteArray html = QByteArrayLiteral("<!DOCTYPE html>\n<html>");
    QByteArray wide;
    for (const char c : html)
        wide += QByteArray(1, c) + '\0';
    EXPECT_EQ(foreignFormat("\xEF\xBB\xBF" + html), ImageFormat::WebPage);
    EXPECT_EQ(foreignFormat("\xFF\xFE" + wide), ImageFormat::WebPage);
    EXPECT_EQ(foreignFormat(wide), ImageFormat::WebPage);
    EXPECT_EQ(foreignFormat(QByteArray(1, '\0') + wide), ImageFormat::WebPage);
    EXPECT_EQ(foreignFormat("\xFE\xFF" + QByteArray(1, '\0') + wide), ImageFormat::WebPage);
}

TEST(ForeignFile, AnythingElseIsUnknown)
{
    for (const char* other : {"", "F0 7E 7F 06 01 F7", "<svg>", "html <html>", "PK", "7z"})
        EXPECT_EQ(foreignFormat(other), ImageFormat::Unknown) << other;
    EXPECT_EQ(foreignFormat("<" + QByteArray(600, '-') + "<html>"), ImageFormat::Unknown);
}
