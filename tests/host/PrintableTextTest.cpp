#include "host/base/PrintableText.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

using namespace hx;

TEST(PrintableText, WritesOutWhatSteersATerminal)
{
    EXPECT_EQ(printable("a\x1B[2J\n\t\x7F"), "a\\x1B[2J\\x0A\\x09\\x7F");
    EXPECT_EQ(printable(QString(QChar(0x9B))), "\\u009B");
    EXPECT_EQ(printable(QString(QChar(0x2028))), "\\u2028");
    EXPECT_EQ(printable(QString(QChar(0x202E))), "\\u202E");
    EXPECT_EQ(printable(QString(QChar(0x2069))), "\\u2069");
    EXPECT_EQ(printable(QString(QChar(0))), "\\x00");
}

TEST(PrintableText, WritesOutWhatStandsForNoCharacter)
{
    EXPECT_EQ(printable(QString(QChar(0xDCE9))), "\\xE9");
    EXPECT_EQ(printable(QString(QChar(0xD800))), "\\uD800");
    EXPECT_EQ(printable(QString(QChar(0xDC00))), "\\uDC00");
}

TEST(PrintableText, LeavesAllOtherTextAsItIs)
{
    const QString text = QString::fromUtf8("\\x41 \xC3\xA4 \xC2\xA0 \xF0\x9F\x8E\xB9 \xE2\x80\x8D");
    EXPECT_EQ(printable(text), text);
    EXPECT_EQ(printableLines("one\ntwo\r\n\x1B"), "one\ntwo\\x0D\n\\x1B");
}
