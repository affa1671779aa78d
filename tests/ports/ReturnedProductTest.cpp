// Who is behind a port that came back in the midst of an update.
#include "tests/ports/ReturningFixture.h"

namespace hx {

TEST_F(Returning, AnotherUnitUnderTheOldNameGetsNothingOfTheUpdate)
{
    for (int message = 1; message <= imageMessages; ++message) {
        socket.wire.device() = productOf(sim::valdrin());
        socket.substitute.reset();
        socket.heardBySubstitute.clear();
        plugIn();
        socket.substitute = productOf(sim::valdrin(), "Unit0002");
        const UpdateResult result = updateWithLossAt(message);
        EXPECT_EQ(result.outcome, UpdateOutcome::WrongProduct) << message;
        EXPECT_EQ(result.sendEnd, SendEnd::OtherProduct);
        EXPECT_EQ(result.failedMessage, message);
        EXPECT_EQ(result.otherProduct,
                  "another product is on the port since it is back: serial number 55 6E 69 74 30 "
                  "30 30 32; expected serial number 55 6E 69 74 30 30 30 31");
        EXPECT_EQ(result.productCondition, ProductCondition::OtherProduct);
        EXPECT_EQ(result.productState, "The update was begun and not finished. Another product has "
                                       "taken its place on the port: the product may hold no valid "
                                       "code.");
        EXPECT_TRUE(substituteWasOnlyAsked()) << message;
    }
}

TEST_F(Returning, AnotherModelUnderTheOldNameGetsNothingOfTheUpdate)
{
    socket.substitute = productOf(otherModel());
    const UpdateResult result = updateWithLossAt(3);
    EXPECT_EQ(result.outcome, UpdateOutcome::WrongProduct);
    EXPECT_TRUE(result.otherProduct.endsWith("maker 00 6B 2D, identifier 0x300042; expected maker "
                                             "00 6B 2D, identifier 0x300041"))
        << result.otherProduct.toStdString();
    EXPECT_TRUE(substituteWasOnlyAsked());
}

TEST_F(Returning, AnotherUnitIsNotTakenForTheUpdatedOneAfterTheLastMessage)
{
    socket.substitute = productOf(sim::valdrin(), "Unit0002");
    const UpdateResult result = updateWithLossAt(imageMessages + 1);
    EXPECT_EQ(result.outcome, UpdateOutcome::WrongProduct);
    EXPECT_EQ(result.failedMessage, 0) << "all messages were sent to the product of before";
    EXPECT_NE(result.otherProduct, "");
    EXPECT_TRUE(substituteWasOnlyAsked());
}

TEST_F(Returning, AProductThatDoesNotSayWhoItIsGetsNothingOfTheUpdate)
{
    socket.substitute = productWith("silent");
    const UpdateResult result = updateWithLossAt(3);
    EXPECT_EQ(result.outcome, UpdateOutcome::NoAnswer);
    EXPECT_EQ(result.failedMessage, 3);
    EXPECT_EQ(result.failedAttempts, 4);
    for (const QByteArray& message : socket.heardBySubstitute)
        EXPECT_NE(message.mid(6, 1), "\x43") << message.toHex().toStdString();
}

TEST_F(Returning, OneChangedSerialNumberOnTheWayDoesNotEndTheUpdate)
{
    QString error;
    const auto damaged = sim::parseFault("damage-reply:2:9:1", &error);
    ASSERT_TRUE(damaged.has_value()) << error.toStdString();
    socket.substitute = productOf(sim::valdrin(), "Unit0001", {*damaged});
    const UpdateResult result = updateWithLossAt(1);
    EXPECT_EQ(result.outcome, UpdateOutcome::Succeeded) << result.reason.toStdString();
}

TEST_F(Returning, APortThatGoesAwayAgainWhileItsProductIsAskedIsAskedAgain)
{
    socket.messagesUntilLoss = questions + 2;
    const auto pullOutOnceMore = [this](BusEventKind kind) {
        if (kind == BusEventKind::PortBack && socket.number < 32)
            socket.messagesUntilLoss = 1; // between the identity and the serial number
    };
    onTold = pullOutOnceMore;
    const UpdateResult result = update();
    EXPECT_EQ(result.outcome, UpdateOutcome::Succeeded) << result.reason.toStdString();
    EXPECT_EQ(port().returns(), 3);
}

} // namespace hx
