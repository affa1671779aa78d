#include "tests/hxmidi/CommandRun.h"

#include <QJsonArray>

#include <gtest/gtest.h>

struct Reading {
    const char* data;
    const char* field;
    const char* value;
};

void PrintTo(const Reading& reading, std::ostream* out)
{
    *out << '"' << reading.data << ' ' << reading.field << '"';
}

class FieldValue : public testing::TestWithParam<Reading> {};

TEST_P(FieldValue, IsRead)
{
    const Reading& reading = GetParam();
    EXPECT_EQ(hxmidi({"fields", reading.data, reading.field}).out,
              std::string(reading.field) + " " + reading.value + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Fields, FieldValue,
    testing::Values(
        Reading{"057F", "14bit@0", "767"}, Reading{"8101", "14bit@0", "-16255"},
        Reading{"057F", "14bit@1", "16256"}, Reading{"057F", "14bit@2", "0"},
        Reading{"0F7F7F7F7F", "utime@0", "4294967295"},
        Reading{"F00111512C78F7", "UTIME@1", "305419896"}, Reading{"0F7F7F7F7F", "32bit@0", "-1"},
        Reading{"0000000080", "32bit@0", "-128"}, Reading{"0100000000", "32bitle@0", "1"},
        Reading{"0000000001", "32bitle@0", "268435456"}, Reading{"037C000000", "float32@0", "1"},
        Reading{"037B194C66", "float32@0", "0.899999976"},
        Reading{"077C000000", "float32@0", "inf"}, Reading{"7F", "int1@0", "127"},
        Reading{"80", "int1@0", "-128"}, Reading{"0100", "int2@0", "128"},
        Reading{"010000", "int3@0", "65536"}, Reading{"F001000000", "int4@0x1", "16777216"},
        Reading{"F04142C3F7", "string@1", "\"ABC\""}, Reading{"F04142C3F7", "string@1+2", "\"AB\""},
        Reading{"F04142F7", "ascii@1+2", "\"AB\""}, Reading{"41E9", "ascii@0", "\"A\xC3\xA9\""},
        Reading{"00220A5C7F", "ascii@0", "\"\\x00\\\"\\x0a\\\\\\x7f\""},
        Reading{"F0", "string@1", "\"\""}));

TEST(Fields, ReadsSeveralInTheOrderTheyAreNamed)
{
    EXPECT_EQ(hxmidi({"fields", "14bit@3", "F0", "05", "7F", "01", "int1@1", "00", "F7"}).out,
              "14bit@3 128\nint1@1 5\n");
}

TEST(Fields, RefusesAFieldOutsideOfTheData)
{
    const CommandRun run = hxmidi({"fields", "F0 01 F7", "utime@1"});
    EXPECT_EQ(run.err, "error: \"utime@1\" does not lie within the data\n"
                       "  utime@1\n"
                       "  ^~~~~~~\n"
                       "  expected: a field within its 3 bytes\n"
                       "  next: correct the position, or give a value with --fallback\n");
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.code, 2);
    for (const char* field : {"14bit@4", "int1@3", "int4@0", "string@1+3", "ascii@3+1", "string@4"})
        EXPECT_EQ(hxmidi({"fields", "F0 01 F7", field}).code, 2) << field;
}

TEST(Fields, TakesTheFallbackOutsideOfTheData)
{
    const CommandRun run = hxmidi(
        {"fields", "--fallback", "-7", "F0 01", "utime@1", "14bit@3", "float32@0", "int1@1"});
    EXPECT_EQ(run.out, "utime@1 4294967289\n14bit@3 -7\nfloat32@0 -7\nint1@1 1\n");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(hxmidi({"fields", "--fallback", "0", "F0 01", "string@1+9"}).code, 2);
}

TEST(Fields, WarnsWhereFourteenBitsLackAByte)
{
    EXPECT_EQ(hxmidi({"fields", "05 7F", "14bit@1"}).err,
              "warning: only 1 of the 2 bytes are there, missing ones count as 0\n"
              "  14bit@1\n"
              "  ^~~~~~~\n"
              "  next: correct the position\n");
}

TEST(Fields, WarnsOfBytesThatCountAsNegative)
{
    EXPECT_EQ(hxmidi({"fields", "81 01", "14bit@0"}).err,
              "warning: the bytes 81 01 hold one above 7F, which may count as negative\n"
              "  14bit@0\n"
              "  ^~~~~~~\n"
              "  next: see that the field does not reach into a status byte\n");
    EXPECT_EQ(hxmidi({"fields", "FF 7F 7F 7F 7F", "utime@0"}).err, "");
}

struct BadField {
    const char* field;
    const char* what;
};

void PrintTo(const BadField& bad, std::ostream* out)
{
    *out << '"' << bad.field << '"';
}

class FieldsBad : public testing::TestWithParam<BadField> {};

TEST_P(FieldsBad, IsRefused)
{
    const CommandRun run = hxmidi({"fields", "F0 01 F7", GetParam().field});
    EXPECT_EQ(run.firstComplaint(), std::string("error: ") + GetParam().what);
    EXPECT_EQ(run.code, 2);
}

INSTANTIATE_TEST_SUITE_P(
    Fields, FieldsBad,
    testing::Values(BadField{"int9@0", "\"int9\" is not a type of field"},
                    BadField{"int1@", "\"\" is not a number for a position"},
                    BadField{"int1@x", "\"x\" is not a number for a position"},
                    BadField{"int1@-1", "\"-1\" is out of range for a position"},
                    BadField{"int1@99999999999", "\"99999999999\" is out of range for a position"},
                    BadField{"int1@1+1", "\"1+1\" is not a number for a position"},
                    BadField{"string@1+", "\"\" is not a number for a length"},
                    BadField{"string@1+0", "\"0\" is out of range for a length"}));

TEST(Fields, WantsAtLeastOneField)
{
    EXPECT_EQ(hxmidi({"fields", "F0 01 F7"}).firstComplaint(), "error: no field is named");
}

TEST(Fields, ReadsTheFieldsOfStandardInput)
{
    EXPECT_EQ(hxmidi({"fields", "int1@1"}, "F0 05 F7\n").out, "int1@1 5\n");
}

TEST(Fields, GivesValuesAsJson)
{
    const QJsonArray fields = hxmidi({"fields", "--json", "F0 01 41 F7", "int1@1", "string@2+1"})
                                  .json()
                                  .value(QStringLiteral("result"))
                                  .toObject()
                                  .value(QStringLiteral("fields"))
                                  .toArray();
    const QJsonArray expected{QJsonObject{{QStringLiteral("field"), QStringLiteral("int1@1")},
                                          {QStringLiteral("value"), 1}},
                              QJsonObject{{QStringLiteral("field"), QStringLiteral("string@2+1")},
                                          {QStringLiteral("value"), QStringLiteral("A")}}};
    EXPECT_EQ(fields, expected);
}
