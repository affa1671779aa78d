// A port that goes away and comes back, and who is behind it then.
#include "tests/host/PortBusFixture.h"

using namespace hx;

TEST_F(PortBusTest, APortThatIsGoneWhenItIsSentToIsLost)
{
    port.sendError = "unplugged";
    port.isUnplugged = true;
    EXPECT_TRUE(transact().bytes.isEmpty());
    EXPECT_EQ(bus.lastEnd(), ExchangeEnd::PortLost);
    EXPECT_EQ(recorder.first(BusEventKind::SendFailed).bytes, command);
    EXPECT_EQ(recorder.first(BusEventKind::PortLost).text, "unplugged");
}

TEST_F(PortBusTest, AMessageAtWhichThePortCameBackIsSentAgain)
{
    answerWith(checksumReply);
    port.absences = 3;
    EXPECT_EQ(transact().bytes, checksumReply);
    EXPECT_EQ(port.sent, std::vector<QByteArray>{command});
    port.absences = 5;
    EXPECT_TRUE(transact().bytes.isEmpty()) << "it comes and goes for ever";
    EXPECT_EQ(bus.lastEnd(), ExchangeEnd::SendFailed);
    EXPECT_EQ(port.absences, 1);
}

TEST_F(PortBusTest, AfterAReturnThePortIsLookedAtBeforeAnythingIsSent)
{
    int looks = 0;
    bus.setReturnCheck([&]() -> ReturnVerdict {
        ++looks;
        EXPECT_EQ(bus.transact(hex("F07E7F0601F7"), "F07E", 100).bytes, hex("F07EF7"));
        return {};
    });
    port.answer = [this](const QByteArray& message, int) {
        const bool isQuestion = message.startsWith(hex("F07E"));
        port.arrive(isQuestion ? hex("F07EF7") : checksumReply);
    };
    EXPECT_EQ(transact().bytes, checksumReply);
    EXPECT_EQ(looks, 0) << "it was not away";
    port.absences = 1;
    EXPECT_EQ(transact().bytes, checksumReply);
    ++port.returned; // while nothing is sent
    EXPECT_EQ(transact().bytes, checksumReply);
    EXPECT_EQ(looks, 2);
    const QByteArray question = hex("F07E7F0601F7");
    EXPECT_EQ(port.sent, (std::vector<QByteArray>{command, question, command, question, command}));
}

TEST_F(PortBusTest, WhatCameWhileThePortWasLookedAtIsNoAnswer)
{
    bus.setReturnCheck([&]() -> ReturnVerdict {
        bus.transact(hex("F07E7F0601F7"), "F07E", 100);
        return {};
    });
    port.answer = [this](const QByteArray& message, int) {
        if (message.startsWith(hex("F07E"))) {
            port.arrive(hex("F07EF7"));
            port.arrive(checksumReply);
        }
    };
    ++port.returned;
    EXPECT_TRUE(transact().bytes.isEmpty());
    EXPECT_EQ(bus.lastEnd(), ExchangeEnd::TimedOut);
}

TEST_F(PortBusTest, NothingIsSentToWhatIsNotKnownBehindAPortThatCameBack)
{
    ReturnVerdict verdict = {ExchangeEnd::OtherProduct, "somebody else"};
    bus.setReturnCheck([&] { return verdict; });
    port.absences = 1;
    answerWith(checksumReply);
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(transact().bytes.isEmpty());
        EXPECT_EQ(bus.lastEnd(), ExchangeEnd::OtherProduct);
        EXPECT_EQ(bus.errorText, "somebody else");
    }
    EXPECT_TRUE(port.sent.empty());
    verdict = {};
    EXPECT_EQ(transact().bytes, checksumReply) << "it is asked each time";
}
