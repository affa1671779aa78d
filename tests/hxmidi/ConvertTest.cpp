#include "tests/hxmidi/CommandRun.h"

#include "tests/mididata/Random.h"

#include <gtest/gtest.h>

TEST(Convert, WritesEveryForm)
{
    EXPECT_EQ(hxmidi({"convert", "F07E"}).out, "F0 7E\n");
    EXPECT_EQ(hxmidi({"convert", "--to", "hex", "F07E"}).out, "F0 7E\n");
    EXPECT_EQ(hxmidi({"convert", "--to", "compact", "F0 7E"}).out, "F07E\n");
    EXPECT_EQ(hxmidi({"convert", "--to", "raw", "F0 00 7E"}).out, std::string("\xF0\0\x7E", 3));
    EXPECT_EQ(hxmidi({"convert", "--to", "decimal", "F0 00 7E"}).out, "240 0 126\n");
    EXPECT_EQ(hxmidi({"convert", "--to", "c", "000102030405060708090A0BF7"}).out,
              "const unsigned char data[] = {\n"
              "    0x00, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08, 0x09, 0x0A, 0x0B,\n"
              "    0xF7,\n"
              "};\n");
}

TEST(Convert, RefusesACArrayWithoutBytes)
{
    EXPECT_EQ(hxmidi({"convert", "--to", "c", ""}).firstComplaint(),
              "error: there are no bytes for a C array");
}

TEST(Convert, RefusesAnUnknownForm)
{
    EXPECT_EQ(hxmidi({"convert", "--to", "octal", "00"}).code, 2);
    EXPECT_EQ(hxmidi({"convert", "--to", "octal", "00"}).firstComplaint(),
              "error: --to: \"octal\" is not one of: c, compact, decimal, hex, raw");
    EXPECT_EQ(hxmidi({"convert", "--from", "octal", "00"}).code, 2);
}

TEST(Convert, ReadsDecimalNumbers)
{
    EXPECT_EQ(hxmidi({"convert", "--from", "decimal", "240", "126,0", "007"}).out, "F0 7E 00 07\n");
    EXPECT_EQ(hxmidi({"convert", "--from", "decimal", "240 256"}).err,
              "error: \"256\" is out of range for a byte\n"
              "  240 256\n"
              "      ^~~\n"
              "  expected: a number from 0 to 255, decimal or after 0x hexadecimal\n"
              "  next: give a number in that range\n");
}

TEST(Convert, ReadsACArray)
{
    EXPECT_EQ(hxmidi({"convert", "--from", "c"}, "uint8_t m[3] =\n{ 0xF0, 126,\n  0x7f };\n").out,
              "F0 7E 7F\n");
    EXPECT_EQ(hxmidi({"convert", "--from", "c", "0xF0, 1"}).out, "F0 01\n");
    EXPECT_EQ(hxmidi({"convert", "--from", "c"}, "x = { 0xF0, F7 };").code, 2);
    EXPECT_EQ(hxmidi({"convert", "--from", "c"}, "x[] = { 0xF0,\n").firstComplaint(),
              "error: standard input:1:7: the array's brace is not closed");
}

TEST(Convert, ReadsBackWhatItWrites)
{
    Random random(4);
    for (int i = 0; i < 200; ++i) {
        const QByteArray bytes = random.bytes(1 + random.below(40));
        for (const char* form : {"raw", "hex", "decimal", "c"}) {
            const CommandRun written = hxmidi({"convert", "--from", "raw", "--to", form}, bytes);
            const CommandRun read = hxmidi({"convert", "--from", form, "--to", "raw"},
                                           QByteArray::fromStdString(written.out));
            ASSERT_EQ(read.out, bytes.toStdString()) << form << ": " << written.out;
        }
    }
}
