#include "simulator/FaultPlan.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace hx::sim {

namespace {

constexpr int unlimited = std::numeric_limits<int>::max();

struct Reading {
    const char* text;
    FaultKind kind;
    int first;
    int last;
    int position;
    int value;
};

void PrintTo(const Reading& reading, std::ostream* out)
{
    *out << '"' << reading.text << '"';
}

std::string refusal(const char* text)
{
    QString error;
    return parseFault(QString::fromLatin1(text), &error) ? "taken" : error.toStdString();
}

} // namespace

class FaultText : public testing::TestWithParam<Reading> {};

TEST_P(FaultText, IsRead)
{
    const Reading& expected = GetParam();
    QString error;
    const auto fault = parseFault(QString::fromLatin1(expected.text), &error);
    ASSERT_TRUE(fault.has_value()) << error.toStdString();
    EXPECT_EQ(fault->kind, expected.kind);
    EXPECT_EQ(fault->first, expected.first);
    EXPECT_EQ(fault->last, expected.last);
    EXPECT_EQ(fault->position, expected.position);
    EXPECT_EQ(fault->value, expected.value);
    EXPECT_TRUE(error.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    All, FaultText,
    testing::Values(Reading{"silent", FaultKind::Silent, 1, unlimited, 0, 0},
                    Reading{"silent:*", FaultKind::Silent, 1, unlimited, 0, 0},
                    Reading{"silent:7", FaultKind::Silent, 7, 7, 0, 0},
                    Reading{"silent:7-", FaultKind::Silent, 7, unlimited, 0, 0},
                    Reading{"silent:7-9", FaultKind::Silent, 7, 9, 0, 0},
                    Reading{"silent:999999", FaultKind::Silent, 999999, 999999, 0, 0},
                    Reading{"duplicate-message", FaultKind::DuplicateMessage, 1, unlimited, 0, 0},
                    Reading{"damage-message", FaultKind::DamageMessage, 1, unlimited, -2, 1},
                    Reading{"damage-message:2:511:FF", FaultKind::DamageMessage, 2, 2, 511, 0xFF},
                    Reading{"cut-message:3:-511", FaultKind::CutMessage, 3, 3, -511, 0},
                    Reading{"insert-message:3:8:f8", FaultKind::InsertMessage, 3, 3, 8, 0xF8},
                    Reading{"insert-message:3:8:00", FaultKind::InsertMessage, 3, 3, 8, 0},
                    Reading{"refuse:1", FaultKind::Refuse, 1, 1, 0, 0},
                    Reading{"wrong-model", FaultKind::WrongModel, 1, unlimited, 0, 0},
                    Reading{"vanish:5", FaultKind::Vanish, 5, 5, 0, 0},
                    Reading{"bad-ack:2-3", FaultKind::BadAck, 2, 3, 0, 0},
                    Reading{"failed-ack:2", FaultKind::FailedAck, 2, 2, 0, 0},
                    Reading{"power-cut", FaultKind::PowerCut, 1, unlimited, 0, cutDuringWrites},
                    Reading{"power-cut:4:before", FaultKind::PowerCut, 4, 4, 0, 0},
                    Reading{"power-cut:4:during", FaultKind::PowerCut, 4, 4, 0, cutDuringWrites},
                    Reading{"power-cut:4:after", FaultKind::PowerCut, 4, 4, 0, cutAfterWrites},
                    Reading{"power-cut:4:17", FaultKind::PowerCut, 4, 4, 0, 17},
                    Reading{"bad-write:2", FaultKind::BadWrite, 2, 2, 0, 0},
                    Reading{"drop-reply:2", FaultKind::DropReply, 2, 2, 0, 0},
                    Reading{"duplicate-reply:2", FaultKind::DuplicateReply, 2, 2, 0, 0},
                    Reading{"damage-reply:2:0:80", FaultKind::DamageReply, 2, 2, 0, 0x80},
                    Reading{"cut-reply:2", FaultKind::CutReply, 2, 2, -2, 0},
                    Reading{"insert-reply:2:1", FaultKind::InsertReply, 2, 2, 1, 0},
                    Reading{"delay-reply", FaultKind::DelayReply, 1, unlimited, 0, 3000},
                    Reading{"delay-reply:2:600000", FaultKind::DelayReply, 2, 2, 0, 600000},
                    Reading{"late-reply:2", FaultKind::LateReply, 2, 2, 0, 0},
                    Reading{"swap-reply:2", FaultKind::SwapReply, 2, 2, 0, 0},
                    Reading{"noise", FaultKind::Noise, 1, unlimited, 0, 0}));

TEST(FaultPlan, UnknownNameIsRefusedWithTheListOfNames)
{
    EXPECT_EQ(refusal("sielnt:3"),
              "there is no fault \"sielnt\": expected one of silent, duplicate-message, "
              "damage-message, cut-message, insert-message, refuse, wrong-model, vanish, bad-ack, "
              "failed-ack, power-cut, bad-write, drop-reply, duplicate-reply, damage-reply, "
              "cut-reply, insert-reply, delay-reply, late-reply, swap-reply, noise");
    EXPECT_EQ(refusal("").substr(0, 20), "there is no fault \"\"");
    EXPECT_EQ(refusal("SILENT").substr(0, 26), "there is no fault \"SILENT\"");
}

TEST(FaultPlan, WhichMustBeNumbersInOrder)
{
    for (const char* which : {"", "x", "0", "-3", "3-2", "3-4-5", "1000000", "3-x", "**", "1,2"})
        EXPECT_EQ(refusal((std::string("silent:") + which).c_str()),
                  std::string("\"") + which + "\" in the fault \"silent:" + which +
                      "\" does not fit: expected N, N-M, N- or *, counted from 1 to 999999");
}

TEST(FaultPlan, ArgumentOutsideOfItsRangeIsRefused)
{
    EXPECT_EQ(refusal("cut-reply:1:512"), "\"512\" in the fault \"cut-reply:1:512\" does not fit: "
                                          "expected a byte's position from -511 to 511");
    EXPECT_EQ(refusal("damage-reply:1:5:00"),
              "\"00\" in the fault \"damage-reply:1:5:00\" does not "
              "fit: expected hex digits from 01 to FF");
    EXPECT_EQ(refusal("insert-reply:1:5:100"), "\"100\" in the fault \"insert-reply:1:5:100\" does "
                                               "not fit: expected hex digits from 00 to FF");
    EXPECT_EQ(refusal("delay-reply:1:-1"), "\"-1\" in the fault \"delay-reply:1:-1\" does not fit: "
                                           "expected milliseconds from 0 to 600000");
    EXPECT_EQ(
        refusal("power-cut:1:-1"),
        "\"-1\" in the fault \"power-cut:1:-1\" does not fit: expected before, during, after, "
        "or memory writes from 0 to 9999");
    EXPECT_EQ(refusal("cut-reply:1:before").substr(0, 8), "\"before\"");
}

TEST(FaultPlan, ArgumentThatTheFaultDoesNotTakeIsRefusedWithItsForm)
{
    EXPECT_EQ(refusal("silent:1:5"), "\"5\" in the fault \"silent:1:5\" does not fit: expected "
                                     "silent[:WHICH]");
    EXPECT_EQ(refusal("cut-reply:1:5:6"), "\"6\" in the fault \"cut-reply:1:5:6\" does not fit: "
                                          "expected cut-reply[:WHICH[:BYTE]]");
    EXPECT_EQ(refusal("damage-reply:1:5:6:7"),
              "\"7\" in the fault \"damage-reply:1:5:6:7\" does not fit: expected "
              "damage-reply[:WHICH[:BYTE[:MASK]]]");
}

TEST(FaultPlan, ErrorMayBeLeftOut)
{
    EXPECT_FALSE(parseFault(QStringLiteral("nonsense"), nullptr));
}

TEST(FaultPlan, StrikesFromFirstToLast)
{
    Fault fault;
    fault.first = 2;
    fault.last = 3;
    EXPECT_FALSE(fault.strikes(1));
    EXPECT_TRUE(fault.strikes(2));
    EXPECT_TRUE(fault.strikes(3));
    EXPECT_FALSE(fault.strikes(4));
}

TEST(FaultPlan, HelpHasALineForEachFaultThatStartsWithItsForm)
{
    const QStringList lines = faultHelp().split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 22); // 21 faults and what follows the last line's end
    EXPECT_TRUE(lines.last().isEmpty());
    EXPECT_EQ(lines.first().toStdString(),
              "silent[:WHICH]                          does not hear the message");
    for (const QString& line : lines.mid(0, 21)) {
        const QString name = line.section(QLatin1Char('['), 0, 0);
        EXPECT_TRUE(parseFault(name, nullptr).has_value()) << line.toStdString();
        EXPECT_LE(line.size(), 130) << line.toStdString();
    }
}

} // namespace hx::sim
