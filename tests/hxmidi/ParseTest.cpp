#include "tests/hxmidi/CommandRun.h"

#include <QJsonArray>

#include <gtest/gtest.h>

TEST(Parse, ShowsTheBytesOfWordsJoinedByBlanks)
{
    const CommandRun run = hxmidi({"parse", "90", "40", "7F"});
    EXPECT_EQ(run.out, "90 40 7F\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.code, 0);
}

TEST(Parse, SaysAnIdentityRequestInWords)
{
    EXPECT_EQ(hxmidi({"parse", "F07E7F0601F7"}).out,
              "F0 7E 7F 06 01 F7\nat 0: identity request to every device\n");
    EXPECT_EQ(hxmidi({"parse", "F07E050601F7"}).out,
              "F0 7E 05 06 01 F7\nat 0: identity request to device 5\n");
}

TEST(Parse, TakesAnIdentityReplyApart)
{
    EXPECT_EQ(hxmidi({"parse", "F07E0006020 06B2D 3000 4100 31303233 F7"}).out,
              "F0 7E 00 06 02 00 6B 2D 30 00 41 00 31 30 32 33 F7\n"
              "at 0: identity reply from device 0\n"
              "  manufacturer 00 6B 2D\n"
              "  family 30 00 (48)\n"
              "  member 41 00 (65)\n"
              "  version 31 30 32 33 (\"1023\")\n");
}

TEST(Parse, ReadsFamilyAndMemberLeastSignificantGroupFirst)
{
    EXPECT_EQ(hxmidi({"parse", "F07E1006027D 0102 7F7F 00010203 F7"}).out,
              "F0 7E 10 06 02 7D 01 02 7F 7F 00 01 02 03 F7\n"
              "at 0: identity reply from device 16\n"
              "  manufacturer 7D\n"
              "  family 01 02 (257)\n"
              "  member 7F 7F (16383)\n"
              "  version 00 01 02 03\n");
}

struct Words {
    const char* bytes;
    const char* words; // of the line "at 0: ..."
};

void PrintTo(const Words& expected, std::ostream* out)
{
    *out << '"' << expected.bytes << '"';
}

class MessageWords : public testing::TestWithParam<Words> {};

TEST_P(MessageWords, AreSaid)
{
    const std::string out = hxmidi({"parse", GetParam().bytes}).out;
    const size_t line = out.find('\n') + 1;
    EXPECT_EQ(out.substr(line), GetParam().words);
}

INSTANTIATE_TEST_SUITE_P(
    Parse, MessageWords,
    testing::Values(
        Words{"F07E7F0601", "at 0: identity request to every device, not closed by F7\n"},
        Words{"F07E7F060100F7",
              "at 0: identity request to every device, malformed: 7 bytes instead of 6\n"},
        Words{"F07E000602006B2D3000410031303233",
              "at 0: identity reply from device 0, not closed by F7\n"},
        Words{"F07E000602006B2D30004100313032F7",
              "at 0: identity reply from device 0, malformed: 16 bytes instead of 17\n"},
        Words{"F07E000602F7",
              "at 0: identity reply from device 0, malformed: 6 bytes instead of 15\n"},
        Words{"F07E000901F7", "at 0: universal non-real-time message 09 01 to device 0\n"},
        Words{"F07F7F04017F7FF7", "at 0: universal real-time message 04 01 to every device\n"},
        Words{"F07E0006F7", "at 0: universal non-real-time message 06 to device 0\n"},
        Words{"F07EF7", "at 0: universal non-real-time message\n"},
        Words{"F07F", "at 0: universal real-time message, not closed by F7\n"},
        Words{"F0006B2D01F7", "at 0: message of manufacturer 00 6B 2D\n"},
        Words{"F04101F7", "at 0: message of manufacturer 41\n"},
        Words{"F07D01F7", "at 0: non-commercial message (7D)\n"},
        Words{"F00001F7", "at 0: System Exclusive message without a complete manufacturer ID\n"},
        Words{"F0F7", "at 0: System Exclusive message without a complete manufacturer ID\n"},
        Words{"F0", "at 0: System Exclusive message without a complete manufacturer ID, "
                    "not closed by F7\n"},
        Words{"903C7F", ""}, Words{"", ""}));

TEST(Parse, SaysWhereEachMessageOfAStreamBegins)
{
    EXPECT_EQ(hxmidi({"parse", "90407F F07E7F0601F7 804000 F07D01F7"}).out,
              "90 40 7F F0 7E 7F 06 01 F7 80 40 00 F0 7D 01 F7\n"
              "at 3: identity request to every device\n"
              "at 12: non-commercial message (7D)\n");
}

TEST(Parse, GivesMessagesAndMeaningAsJson)
{
    const QJsonObject result = hxmidi({"parse", "--json", "90407F F07E000602410102030401020304F7"})
                                   .json()
                                   .value(QStringLiteral("result"))
                                   .toObject();
    EXPECT_EQ(result.value(QStringLiteral("size")).toInt(), 18);
    const QJsonArray messages = result.value(QStringLiteral("messages")).toArray();
    ASSERT_EQ(messages.size(), 2);
    EXPECT_FALSE(messages.at(0).toObject().contains(QStringLiteral("meaning")));
    const QJsonObject reply = messages.at(1).toObject();
    EXPECT_EQ(reply.value(QStringLiteral("at")).toInt(), 3);
    EXPECT_EQ(reply.value(QStringLiteral("words")), QStringLiteral("identity reply from device 0"));
    const QJsonObject expected{{QStringLiteral("kind"), QStringLiteral("identity reply")},
                               {QStringLiteral("device"), 0},
                               {QStringLiteral("wellFormed"), true},
                               {QStringLiteral("manufacturer"), QStringLiteral("41")},
                               {QStringLiteral("family"), 257},
                               {QStringLiteral("member"), 515},
                               {QStringLiteral("version"), QStringLiteral("01 02 03 04")}};
    EXPECT_EQ(reply.value(QStringLiteral("meaning")).toObject(), expected);
}
