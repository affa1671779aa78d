// A port that goes away and comes back in the midst of an update.
#include "tests/ports/ReturningFixture.h"

namespace hx {

TEST_F(Returning, AnUpdateGoesOnWhenThePortComesBackBetweenAnyTwoMessages)
{
    const UpdateResult undisturbed = update();
    ASSERT_EQ(undisturbed.outcome, UpdateOutcome::Succeeded);
    constexpr int messages = questions + imageMessages + 4; // the checks after it
    for (int before = 0; before < messages; ++before) {
        told.clear();
        socket.messagesUntilLoss = before;
        const UpdateResult result = update();
        EXPECT_EQ(result.outcome, UpdateOutcome::Succeeded)
            << before << ": " << result.reason.toStdString();
        EXPECT_EQ(result.progress.retries, 0) << before;
        EXPECT_EQ(told.size(), 2) << before << told.join("; ").toStdString();
    }
    EXPECT_EQ(socket.opened, 1 + messages);
}

TEST_F(Returning, AnUpdateGoesOnOverARenamedPort)
{
    socket.names = QStringList{"Valdrin Update:in", "Valdrin Update-01:in"};
    plugIn();
    const UpdateResult result = updateWithLossAt(3);
    EXPECT_EQ(result.outcome, UpdateOutcome::Succeeded) << result.reason.toStdString();
    EXPECT_EQ(told.value(1), "the port jack:Valdrin Update-01:in is back, as jack:Valdrin "
                             "Update:in");
}

TEST_F(Returning, AnUpdateGoesOnOverARenumberedPort)
{
    const UpdateResult result = updateWithLossAt(3);
    EXPECT_EQ(result.outcome, UpdateOutcome::Succeeded) << result.reason.toStdString();
    EXPECT_EQ(told.value(1), "the port jack:Boot:Boot 20:0 is back, as jack:Boot:Boot 24:0");
}

TEST_F(Returning, AnUpdateGoesOnBesideADoubleThatWasThereBefore)
{
    socket.beside = QStringList{"Boot:Boot 16:0", "Piano 28:0"};
    plugIn();
    const UpdateResult result = updateWithLossAt(3);
    EXPECT_EQ(result.outcome, UpdateOutcome::Succeeded) << result.reason.toStdString();
    EXPECT_EQ(told.value(1), "the port jack:Boot:Boot 20:0 is back, as jack:Boot:Boot 24:0");
}

TEST_F(Returning, NoneOfTwoDoublesThatCameIsTaken)
{
    socket.messagesUntilLoss = questions + 2;
    plugIn();
    socket.beside << "Boot:Boot 40:0";
    const UpdateResult result = update();
    EXPECT_EQ(result.outcome, UpdateOutcome::PortLost);
    EXPECT_EQ(socket.opened, 1);
}

TEST_F(Returning, AnAnswerThatWasLostWithThePortIsAskedForAgain)
{
    for (int before = 0; before < 10; ++before) {
        socket.answersUntilLoss = before;
        const UpdateResult result = update();
        EXPECT_EQ(result.outcome, UpdateOutcome::Succeeded)
            << before << ": " << result.reason.toStdString();
    }
}

TEST_F(Returning, SaysWhatHappensToThePort)
{
    socket.messagesUntilLoss = 0;
    EXPECT_EQ(port().send(identify), 0);
    EXPECT_EQ(port().errorText, "the port jack:Boot:Boot 20:0 was away and is back");
    EXPECT_EQ(port().returns(), 1);
    EXPECT_EQ(port().send(identify), identify.size());
    EXPECT_EQ(port().errorText, "");
    EXPECT_EQ(kinds, (QList<BusEventKind>{BusEventKind::Decided, BusEventKind::PortBack}));
    EXPECT_EQ(told, QStringList({"it was pulled out; it is waited for 5 seconds",
                                 "the port jack:Boot:Boot 20:0 is back, as jack:Boot:Boot 24:0"}));
    EXPECT_EQ(port().name(), "jack:Boot:Boot 20:0");
    EXPECT_EQ(port().identity().name, "Boot:Boot");
    EXPECT_FALSE(port().isGone());
    EXPECT_TRUE(port().drain(port().clock().now()));
}

TEST_F(Returning, APortThatDoesNotComeBackIsGoneAfterFiveSeconds)
{
    socket.comesBack = false;
    socket.messagesUntilLoss = 0;
    EXPECT_EQ(port().send(identify), 0);
    EXPECT_EQ(port().clock().now(), 5 * microsecondsPerSecond);
    EXPECT_TRUE(port().isGone());
    EXPECT_EQ(port().errorText, "it was pulled out");
    socket.isAway = false;
    EXPECT_EQ(port().send(identify), 0) << "it is not looked for any more";
    EXPECT_EQ(port().receive(port().clock().now() + 1000).bytes, "");
    EXPECT_EQ(port().errorText, "it was pulled out");
    EXPECT_FALSE(port().drain(port().clock().now()));
}

TEST_F(Returning, APortWhoseServerIsGoneIsNotWaitedFor)
{
    mayReturn = false;
    socket.messagesUntilLoss = 0;
    EXPECT_EQ(port().send(identify), 0);
    EXPECT_EQ(port().clock().now(), 0);
    EXPECT_EQ(port().errorText, "it was pulled out");
    EXPECT_TRUE(port().isGone());
    EXPECT_EQ(told, QStringList());
    EXPECT_EQ(socket.opened, 1);
}

TEST_F(Returning, AWaitGoesOnUntilItsDeadlineWhileThePortIsAway)
{
    socket.isAway = true;
    EXPECT_EQ(port().receive(100000).bytes, "");
    EXPECT_EQ(port().errorText, "");
    EXPECT_EQ(port().clock().now(), 100000);
    EXPECT_FALSE(port().isGone());
    EXPECT_EQ(port().receive(9 * microsecondsPerSecond).bytes, "");
    EXPECT_EQ(port().clock().now(), 250000) << "the next look";
    socket.isAway = false;
    EXPECT_EQ(port().receive(9 * microsecondsPerSecond).bytes, "");
    EXPECT_EQ(told.size(), 2);
    EXPECT_EQ(port().send(identify), identify.size());
    const MidiChunk answer = port().receive(9 * microsecondsPerSecond);
    EXPECT_EQ(answer.bytes, identityReply);
    EXPECT_EQ(answer.lostBefore, 1) << "a message that was under way has lost its rest";
    EXPECT_EQ(port().send(identify), identify.size());
    EXPECT_EQ(port().receive(9 * microsecondsPerSecond).lostBefore, 0);
}

} // namespace hx
