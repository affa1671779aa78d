#include "host/base/FileName.h"
#include "tests/host/TestFiles.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

#include <set>

using namespace hx;

TEST(FileName, IsTheSameBytesAgainWhateverTheyAre)
{
    std::set<QString> texts;
    int names = 0;
    for (int first = 1; first < 256; ++first) {
        for (int second = 1; second < 256; ++second, ++names) {
            const std::string name = {'x', char(first), char(second)};
            const QString text = fileNameText(name);
            ASSERT_EQ(fileNameBytes(text).toStdString(), name);
            texts.insert(text);
        }
    }
    EXPECT_EQ(int(texts.size()), names);
}

TEST(FileName, InUtf8IsItsText)
{
    EXPECT_EQ(fileNameText("\xC3\xA4\xF0\x9F\x8E\xB9"),
              QString::fromUtf8("\xC3\xA4\xF0\x9F\x8E\xB9"));
    EXPECT_EQ(fileNameBytes(QString::fromUtf8("\xC3\xA4\xF0\x9F\x8E\xB9")),
              "\xC3\xA4\xF0\x9F\x8E\xB9");
    for (const char* name :
         {"", "\xEF\xBB\xBF", "\xED\xB2\x80", "\xF0\x9F\x8E", "\xC0\xAF", "\xEF\xBF\xBD"})
        EXPECT_EQ(fileNameBytes(fileNameText(name)), name);
}

TEST(FileName, LeadsThroughLinksToFilesThatAreNotThereYet)
{
    TestFiles files;
    ASSERT_TRUE(QFile::link("second", files.path("first")));
    ASSERT_TRUE(QFile::link("none", files.path("second")));
    EXPECT_EQ(resolvedPath(files.path("first")), resolvedPath(files.path("none")));
    EXPECT_EQ(resolvedPath(files.path("no/../none")), resolvedPath(files.path("none")));
    ASSERT_TRUE(QFile::link("loop", files.path("loop")));
    EXPECT_FALSE(resolvedPath(files.path("loop")).empty());
}
