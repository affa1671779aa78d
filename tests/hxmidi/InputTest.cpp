// Where data comes from: words, files, standard input; text or raw bytes.
#include "tests/hxmidi/CommandRun.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class Input : public testing::Test {
protected:
    // The name of a new file with this content.
    std::string file(const char* name, const QByteArray& content)
    {
        QFile made(folder.filePath(QString::fromLatin1(name)));
        EXPECT_TRUE(made.open(QIODevice::WriteOnly));
        made.write(content);
        return made.fileName().toStdString();
    }

    QTemporaryDir folder;
};

} // namespace

TEST_F(Input, IsStandardInputWithoutWords)
{
    EXPECT_EQ(hxmidi({"convert"}, "F0 7E\n").out, "F0 7E\n");
    EXPECT_EQ(hxmidi({"convert", "@-"}, "F0 7E\n").out, "F0 7E\n");
    EXPECT_EQ(hxmidi({"convert"}, "").out, "\n");
}

TEST_F(Input, JoinsWordsAndFilesInTheirOrder)
{
    const std::string body = file("body", "01 02\n");
    EXPECT_EQ(hxmidi({"convert", "F0", "@" + body, "@-", "F", "7"}, "03").out, "F0 01 02 03 F7\n");
}

TEST_F(Input, ReadsAFileOfTextAsHexText)
{
    const std::string name = file("text", "F0 7E\r\n\t7F,06\n");
    EXPECT_EQ(hxmidi({"convert", "--tokens", "@" + name}).out, "F0 7E 7F 06\n");
}

TEST_F(Input, ReadsAFileWithOtherBytesAsRaw)
{
    EXPECT_EQ(hxmidi({"convert", "@" + file("syx", "\xF0\x41\xF7")}).out, "F0 41 F7\n");
    EXPECT_EQ(hxmidi({"convert"}, QByteArray("41\0", 3)).out, "34 31 00\n");
    EXPECT_EQ(hxmidi({"convert"}, "\x7F").out, "7F\n");
}

TEST_F(Input, WarnsOfAStandardMidiFile)
{
    const QByteArray content("MThd\0\0\0\6", 8);
    const std::string name = file("take.mid", content);
    const CommandRun run = hxmidi({"convert", "@" + name});
    EXPECT_EQ(run.out, "4D 54 68 64 00 00 00 06\n");
    EXPECT_EQ(run.err,
              "warning: \"" + name +
                  "\" is a Standard MIDI File: between its messages there are times, "
                  "lengths and headers\n"
                  "  next: save its messages as a .syx file; --raw reads the bytes without "
                  "this warning\n");
    EXPECT_EQ(hxmidi({"convert", "--raw", "@" + name}).err, "");
}

TEST_F(Input, ReadsTextAsRawWhenTold)
{
    EXPECT_EQ(hxmidi({"convert", "--raw"}, "41").out, "34 31\n");
    EXPECT_EQ(hxmidi({"convert", "--from", "raw"}, "41").out, "34 31\n");
}

TEST_F(Input, RefusesOtherBytesAsHexWhenTold)
{
    const CommandRun run = hxmidi({"convert", "--from", "hex"}, "F0\n\xF0");
    EXPECT_EQ(run.firstComplaint(), "error: standard input:2:1: the text holds a character that is "
                                    "not plain ASCII");
    EXPECT_EQ(run.code, 2);
}

TEST_F(Input, PassesOverAByteOrderMark)
{
    EXPECT_EQ(hxmidi({"convert"}, "\xEF\xBB\xBF"
                                  "F0 7E")
                  .out,
              "F0 7E\n");
}

TEST_F(Input, ReadsHexTextInUtf16)
{
    EXPECT_EQ(hxmidi({"convert"}, QByteArray("\xFF\xFE"
                                             "F\0"
                                             "0\0"
                                             "\r\0"
                                             "\n\0"
                                             "7\0"
                                             "E\0",
                                             14))
                  .out,
              "F0 7E\n");
    EXPECT_EQ(hxmidi({"convert"}, QByteArray("\xFE\xFF"
                                             "\0F"
                                             "\0"
                                             "0",
                                             6))
                  .out,
              "F0\n");
    EXPECT_EQ(hxmidi({"convert", "--from", "decimal"}, QByteArray("\xFF\xFE"
                                                                  "6\0"
                                                                  "5\0",
                                                                  6))
                  .out,
              "41\n");
    EXPECT_EQ(hxmidi({"convert"}, QByteArray("\xFF\xFE\x01\x02", 4)).out, "FF FE 01 02\n");
    EXPECT_EQ(hxmidi({"convert"}, QByteArray("\xFF\xFE"
                                             "F\0"
                                             "0",
                                             5))
                  .out,
              "FF FE 46 00 30\n");
}

TEST_F(Input, NamesFileLineAndColumnOfAnError)
{
    const std::string name = file("bad.txt", "F0 7E\n  ZZ\n");
    EXPECT_EQ(hxmidi({"convert", "@" + name}).err,
              "error: " + name +
                  ":2:3: \"ZZ\" is not a hex number\n"
                  "    ZZ\n"
                  "    ^~\n"
                  "  expected: digits 0 to 9 and A to F\n"
                  "  next: correct it; with --lenient it is left out, as HxMidiData does\n");
}

TEST_F(Input, TellsAFileNameFromHexText)
{
    const std::string name = file("a.syx", "\xF0\xF7");
    EXPECT_EQ(hxmidi({"convert", name}).err, "error: \"" + name.substr(0, 40) +
                                                 (name.size() > 40 ? "..." : "") +
                                                 "\" is the name of a file\n"
                                                 "  expected: hex text, or @ and a file's name\n"
                                                 "  next: write @" +
                                                 name + "\n");
}

TEST_F(Input, RefusesAFileThatIsNotThere)
{
    const CommandRun run = hxmidi({"convert", "@nope.syx"});
    EXPECT_EQ(run.err, "error: \"nope.syx\" cannot be read: No such file or directory\n"
                       "  expected: the name of a readable file after @\n"
                       "  next: check the name and its permissions\n");
    EXPECT_EQ(run.code, 2);
}

TEST_F(Input, RefusesAFolder)
{
    EXPECT_EQ(hxmidi({"convert", "@" + folder.path().toStdString()}).code, 2);
    EXPECT_EQ(hxmidi({"convert", "@"}).code, 2);
}

TEST_F(Input, RefusesStandardInputTwice)
{
    EXPECT_EQ(hxmidi({"diff", "@-", "@-"}, "F0").firstComplaint(),
              "error: standard input is asked for twice");
}

TEST_F(Input, RefusesRawWords)
{
    EXPECT_EQ(hxmidi({"convert", "--raw", "F0"}).firstComplaint(),
              "error: \"F0\" cannot be raw bytes");
    EXPECT_EQ(hxmidi({"convert", "--raw", "--from", "hex", "F0"}).code, 2);
}

TEST_F(Input, HasALimit)
{
    constexpr int most = 4 * 1024 * 1024;
    const std::string full = "@" + file("full", QByteArray(most, '\x80'));
    EXPECT_EQ(hxmidi({"hash", full}).code, 0);
    EXPECT_EQ(hxmidi({"hash", full, "00"}).code, 0);
    EXPECT_EQ(hxmidi({"hash", full, "@-"}, "\x80").firstComplaint(),
              "error: there is too much data");
    EXPECT_EQ(hxmidi({"hash", "@" + file("more", QByteArray(most + 1, '\x80'))}).code, 2);
}
