#include "simulator/FaultyProduct.h"

#include "tests/simulator/UpdateFixture.h"
#include "tests/support/Valdrin.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace hx::sim {

namespace {

const QByteArray wholeCode = codeOfSize(300);
const QVector<QByteArray> wholeImage = imageOf(wholeCode, "1024");
const QByteArray gender = bytesOf("F0006B2D30412FF7");
const QByteArray genderReply = "F0 00 6B 2D 30 41 2F 00 30 00 41 F7";

FaultyProduct productWith(const char* faults)
{
    FaultPlan plan;
    for (const QString& text : QString::fromLatin1(faults).split(QLatin1Char(' '))) {
        QString error;
        const auto fault = parseFault(text, &error);
        EXPECT_TRUE(fault.has_value()) << error.toStdString();
        plan.append(fault.value_or(Fault()));
    }
    return FaultyProduct(SimulatedProduct(valdrin()), plan);
}

QByteArray ask(FaultyProduct& product, const QByteArray& bytes)
{
    QByteArray text;
    const QVector<SimulatedReply> replies = product.receive(bytes);
    for (const SimulatedReply& reply : replies)
        text += (text.isEmpty() ? "" : " | ") + hexOf(reply.bytes);
    return text;
}

// The answers to `count` versions of the same question, each marked by its own command byte.
QByteArray askNumbered(const char* faults, int count)
{
    FaultyProduct product = productWith(faults);
    QByteArray text;
    for (int i = 1; i <= count; ++i) {
        const QByteArray question =
            bytesOf("F0006B2D304150F7").replace(6, 1, QByteArray(1, static_cast<char>(0x50 + i)));
        const QVector<SimulatedReply> replies = product.receive(question);
        for (const SimulatedReply& reply : replies)
            text += reply.bytes.mid(6, 1).toHex() + " ";
        text += "/ ";
    }
    return text.trimmed();
}

} // namespace

TEST(FaultyProduct, WithoutFaultsItIsTheProduct)
{
    FaultyProduct faulty{SimulatedProduct(valdrin())};
    SimulatedProduct plain{valdrin()};
    for (const QByteArray& message : wholeImage + QVector<QByteArray>{gender, "\x01\x02", "\xF0"}) {
        const QVector<SimulatedReply> replies = faulty.receive(message);
        const QVector<SimulatedReply> expected = plain.receive(message);
        ASSERT_EQ(replies.size(), expected.size());
        for (int i = 0; i < replies.size(); ++i) {
            EXPECT_EQ(replies.at(i).bytes, expected.at(i).bytes);
            EXPECT_EQ(replies.at(i).delayUs, expected.at(i).delayUs);
        }
    }
    EXPECT_EQ(faulty.product().codeBytes(), wholeCode);
    EXPECT_TRUE(faulty.unaskedBytes().isEmpty());
    EXPECT_FALSE(faulty.isGone());
}

TEST(FaultyProduct, SilentDoesNotHearTheMessage)
{
    EXPECT_EQ(askNumbered("silent:2-3", 4), "51 / / / 54 /");
    FaultyProduct product = productWith("silent");
    EXPECT_EQ(ask(product, wholeImage.first()), "");
    EXPECT_TRUE(product.product().isCodeValid());
}

TEST(FaultyProduct, DuplicateMessageIsHeardTwice)
{
    EXPECT_EQ(askNumbered("duplicate-message:2", 3), "51 / 52 52 / 53 /");
}

TEST(FaultyProduct, DamagedMessageIsCalledBad)
{
    FaultyProduct product = productWith("damage-message:1");
    EXPECT_EQ(ask(product, wholeImage.first()), bad);
    EXPECT_EQ(ask(product, wholeImage.first()), good);
}

TEST(FaultyProduct, DamageTakesPositionAndMask)
{
    FaultyProduct product =
        productWith("damage-message:1:6:0E damage-message:2:99 damage-message:3:-99");
    EXPECT_EQ(ask(product, gender), "F0 00 6B 2D 30 41 21 33 30 34 31 30 30 30 31 F7"); // 2F ^ 0E
    EXPECT_EQ(ask(product, gender), genderReply); // outside of the message
    EXPECT_EQ(ask(product, gender), genderReply);
}

TEST(FaultyProduct, CutMessageIsNotAnswered)
{
    FaultyProduct product = productWith("cut-message:1 cut-message:2:-99 cut-message:3:99");
    EXPECT_EQ(ask(product, gender), "");
    EXPECT_EQ(ask(product, gender), "");
    EXPECT_EQ(ask(product, gender), genderReply);
}

TEST(FaultyProduct, InsertedByteIsHeard)
{
    FaultyProduct product = productWith("insert-message:1:7:01 insert-message:2:7:F8 "
                                        "insert-message:3:3:F0 insert-message:4:99:F8");
    EXPECT_EQ(ask(product, gender), "F0 00 6B 2D 30 41 2F 46 F7");
    EXPECT_EQ(ask(product, gender), genderReply);
    EXPECT_EQ(ask(product, gender), "");
    EXPECT_EQ(ask(product, gender), genderReply);
}

TEST(FaultyProduct, RefusedMessageIsNotActedOn)
{
    FaultyProduct product = productWith("refuse:1-3");
    EXPECT_EQ(ask(product, wholeImage.first()), "F0 00 6B 2D 30 41 43 46 F7");
    EXPECT_TRUE(product.product().isCodeValid());
    EXPECT_EQ(ask(product, gender), "F0 00 6B 2D 30 41 2F 46 F7");
    EXPECT_EQ(ask(product, bytesOf("F07E7F0601F7")), // has no command that could be refused
              "F0 7E 00 06 02 00 6B 2D 30 00 41 00 31 30 32 33 F7");
    EXPECT_EQ(ask(product, gender), genderReply);
}

TEST(FaultyProduct, WrongModelAnswersAsAnother)
{
    FaultyProduct product = productWith("wrong-model");
    EXPECT_EQ(ask(product, bytesOf("F07E7F0601F7")),
              "F0 7E 00 06 02 00 6B 2D 30 00 42 00 31 30 32 33 F7");
    EXPECT_EQ(ask(product, gender), "F0 00 6B 2D 30 42 2F 00 30 00 42 F7");
    EXPECT_EQ(ask(product, wholeImage.first()), "F0 00 6B 2D 30 42 43 0C 00 F7");
    EXPECT_EQ(ask(product, bytesOf("F0006B2D30432FF7")), "");
}

TEST(FaultyProduct, WrongModelInTheMiddleLetsTheMessageComeAgain)
{
    FaultyProduct product = productWith("wrong-model:2");
    EXPECT_EQ(ask(product, wholeImage.at(0)), good);
    EXPECT_EQ(ask(product, wholeImage.at(1)), "F0 00 6B 2D 30 42 43 0C 00 F7");
    EXPECT_EQ(ask(product, wholeImage.at(1)), good);
    EXPECT_EQ(ask(product, wholeImage.at(2)), good);
}

TEST(FaultyProduct, VanishedProductStaysAway)
{
    FaultyProduct product = productWith("vanish:2");
    EXPECT_EQ(ask(product, gender), genderReply);
    EXPECT_FALSE(product.isGone());
    EXPECT_EQ(ask(product, wholeImage.first()), "");
    EXPECT_TRUE(product.isGone());
    EXPECT_TRUE(product.product().isCodeValid());
    EXPECT_EQ(ask(product, gender), "");
}

TEST(FaultyProduct, BadAckIsGivenWithoutWriting)
{
    FaultyProduct product = productWith("bad-ack:1-2");
    EXPECT_EQ(ask(product, gender), genderReply); // is no update message and not counted
    EXPECT_EQ(ask(product, wholeImage.first()), bad);
    EXPECT_EQ(ask(product, closing()), bad);
    EXPECT_TRUE(product.product().isCodeValid());
    for (const QByteArray& message : wholeImage)
        EXPECT_EQ(ask(product, message), good);
}

TEST(FaultyProduct, FailedAckIsGivenInTheKindOfTheMessage)
{
    FaultyProduct product = productWith("failed-ack:1");
    EXPECT_EQ(ask(product, imageOf(wholeCode, "1024", kindFwd).first()),
              "F0 00 6B 2D 30 41 42 0C 02 F7");
    EXPECT_TRUE(product.product().isCodeValid());
}

TEST(FaultyProduct, PowerCutBeforeTheWrites)
{
    FaultyProduct product = productWith("power-cut:2:before");
    EXPECT_EQ(ask(product, wholeImage.at(0)), good);
    EXPECT_EQ(ask(product, wholeImage.at(1)), "");
    EXPECT_EQ(product.product().codeBytes(), wholeCode.left(112));
    EXPECT_EQ(ask(product, wholeImage.at(1)), failed);
}

TEST(FaultyProduct, PowerCutDuringTheWrites)
{
    FaultyProduct product = productWith("power-cut:2");
    EXPECT_EQ(ask(product, wholeImage.at(0)), good);
    EXPECT_EQ(ask(product, wholeImage.at(1)), "");
    EXPECT_EQ(product.product().codeBytes(), wholeCode.left(112 + 56));
    EXPECT_EQ(ask(product, wholeImage.at(1)), failed);
}

TEST(FaultyProduct, PowerCutAfterTheWrites)
{
    FaultyProduct product = productWith("power-cut:2:after");
    EXPECT_EQ(ask(product, wholeImage.at(0)), good);
    EXPECT_EQ(ask(product, wholeImage.at(1)), "");
    EXPECT_EQ(product.product().codeBytes(), wholeCode.left(224));
    EXPECT_EQ(ask(product, wholeImage.at(1)), failed);
}

TEST(FaultyProduct, PowerCutAfterTheClosingLeavesValidCode)
{
    FaultyProduct product = productWith("power-cut:5:after");
    for (const QByteArray& message : wholeImage.mid(0, 4))
        EXPECT_EQ(ask(product, message), good);
    EXPECT_EQ(ask(product, closing()), "");
    EXPECT_TRUE(product.product().isCodeValid());
    EXPECT_EQ(ask(product, closing()), failed);
    EXPECT_TRUE(product.product().isCodeValid());
}

TEST(FaultyProduct, PowerCutAfterSoManyWrites)
{
    FaultyProduct product = productWith("power-cut:2:3 power-cut:4:500");
    EXPECT_EQ(ask(product, wholeImage.at(0)), good);
    EXPECT_EQ(ask(product, wholeImage.at(1)), "");
    EXPECT_EQ(product.product().codeBytes(), wholeCode.left(115));
    EXPECT_EQ(ask(product, wholeImage.at(0)), good);
    EXPECT_EQ(ask(product, wholeImage.at(1)), ""); // fewer writes than that: cut when they are done
    EXPECT_EQ(product.product().codeBytes(), wholeCode.left(224));
}

TEST(FaultyProduct, PowerCutDoesNotTouchOtherMessages)
{
    FaultyProduct product = productWith("power-cut");
    EXPECT_EQ(ask(product, gender), genderReply);
}

TEST(FaultyProduct, BadWriteIsFoundByTheFileCheck)
{
    FaultyProduct product = productWith("bad-write:3");
    for (const QByteArray& message : wholeImage.mid(0, 3))
        EXPECT_EQ(ask(product, message), good);
    EXPECT_EQ(ask(product, wholeImage.at(3)), failed);
    for (const QByteArray& message : wholeImage)
        EXPECT_EQ(ask(product, message), good);
}

TEST(FaultyProduct, BadWriteAfterTheClosingShowsInTheChecksums)
{
    FaultyProduct product = productWith("bad-write:5");
    for (const QByteArray& message : wholeImage)
        EXPECT_EQ(ask(product, message), good);
    EXPECT_NE(ask(product, bytesOf("F0006B2D304130F7")).mid(21),
              ask(product, bytesOf("F0006B2D304131F7")).mid(21));
}

TEST(FaultyProduct, DroppedReplyWasActedOn)
{
    FaultyProduct product = productWith("drop-reply:1");
    EXPECT_EQ(ask(product, wholeImage.at(0)), "");
    EXPECT_FALSE(product.product().isCodeValid());
    EXPECT_EQ(ask(product, wholeImage.at(0)), good);
}

TEST(FaultyProduct, RepliesAreCountedNotMessages)
{
    FaultyProduct product = productWith("drop-reply:2");
    EXPECT_EQ(ask(product, bytesOf("F0006B2D30411C02F7")), ""); // never answered
    EXPECT_EQ(ask(product, gender), genderReply);
    EXPECT_EQ(ask(product, gender), "");
}

TEST(FaultyProduct, DuplicatedReply)
{
    EXPECT_EQ(askNumbered("duplicate-reply:2", 3), "51 / 52 52 / 53 /");
}

TEST(FaultyProduct, DamagedReply)
{
    FaultyProduct product = productWith("damage-reply:1 damage-reply:2:0:80 damage-reply:3:99");
    EXPECT_EQ(ask(product, gender), "F0 00 6B 2D 30 41 2F 00 30 00 40 F7");
    EXPECT_EQ(ask(product, gender), "70 00 6B 2D 30 41 2F 00 30 00 41 F7");
    EXPECT_EQ(ask(product, gender), genderReply);
}

TEST(FaultyProduct, PlacesAreCountedFromTheEndToo)
{
    FaultyProduct product =
        productWith("damage-reply:1:-1:80 damage-reply:2:-12:80 cut-reply:3:-1");
    EXPECT_EQ(ask(product, gender), "F0 00 6B 2D 30 41 2F 00 30 00 41 77");
    EXPECT_EQ(ask(product, gender), "70 00 6B 2D 30 41 2F 00 30 00 41 F7");
    EXPECT_EQ(ask(product, gender), "F0 00 6B 2D 30 41 2F 00 30 00 41");
}

TEST(FaultyProduct, CutReply)
{
    FaultyProduct product = productWith("cut-reply:1 cut-reply:2:3");
    EXPECT_EQ(ask(product, gender), "F0 00 6B 2D 30 41 2F 00 30 00");
    EXPECT_EQ(ask(product, gender), "F0 00 6B");
}

TEST(FaultyProduct, InsertedByteInAReply)
{
    FaultyProduct product = productWith("insert-reply:1:1:90 insert-reply:2");
    EXPECT_EQ(ask(product, gender), "F0 90 00 6B 2D 30 41 2F 00 30 00 41 F7");
    EXPECT_EQ(ask(product, gender), "F0 00 6B 2D 30 41 2F 00 30 00 00 41 F7");
}

TEST(FaultyProduct, DelayedReply)
{
    FaultyProduct product = productWith("delay-reply:2:2201");
    EXPECT_EQ(product.receive(gender).first().delayUs, 1000);
    EXPECT_EQ(product.receive(gender).first().delayUs, 2202000);
    EXPECT_EQ(product.receive(gender).first().delayUs, 1000);
}

TEST(FaultyProduct, LateReplyComesBeforeTheNext)
{
    EXPECT_EQ(askNumbered("late-reply:2", 4), "51 / / 52 53 / 54 /");
    EXPECT_EQ(askNumbered("late-reply", 4), "/ 51 / 52 / 53 /");
}

TEST(FaultyProduct, SwappedReplyComesAfterTheNext)
{
    EXPECT_EQ(askNumbered("swap-reply:2", 4), "51 / / 53 52 / 54 /");
    EXPECT_EQ(askNumbered("swap-reply", 5), "/ 52 51 / / 54 53 / /");
}

TEST(FaultyProduct, NoiseStandsBeforeInAndAfterAReply)
{
    FaultyProduct product = productWith("noise:1");
    EXPECT_EQ(ask(product, gender), "F8 FE F0 00 6B 2D 30 41 F8 FE 2F 00 30 00 41 F7 F8 FE");
    EXPECT_EQ(ask(product, gender), genderReply);
    EXPECT_EQ(hexOf(product.unaskedBytes()), "F8 FE");
}

TEST(FaultyProduct, VanishedProductMakesNoNoise)
{
    FaultyProduct product = productWith("noise vanish:1");
    ask(product, gender);
    EXPECT_TRUE(product.unaskedBytes().isEmpty());
}

TEST(FaultyProduct, FaultsOfAPlanActOneAfterTheOther)
{
    FaultyProduct product = productWith("damage-reply:1:0:80 cut-reply:1:2 duplicate-reply:1");
    EXPECT_EQ(ask(product, gender), "70 00 | 70 00");
    EXPECT_EQ(askNumbered("duplicate-message:1 drop-reply:1", 1), "51 /");
}

TEST(FaultyProduct, ChunkingDoesNotMatter)
{
    FaultyProduct whole = productWith("silent:2 noise:3");
    FaultyProduct bytewise = productWith("silent:2 noise:3");
    const QByteArray bytes = gender + gender + gender + gender;
    QVector<QByteArray> answersOfBytes;
    for (const char byte : bytes)
        for (const SimulatedReply& reply : bytewise.receive(QByteArray(1, byte)))
            answersOfBytes.append(hexOf(reply.bytes));
    EXPECT_EQ(ask(whole, bytes), QStringList({QString::fromLatin1(answersOfBytes.value(0)),
                                              QString::fromLatin1(answersOfBytes.value(1)),
                                              QString::fromLatin1(answersOfBytes.value(2))})
                                     .join(QLatin1String(" | "))
                                     .toLatin1());
    EXPECT_EQ(answersOfBytes.size(), 3);
}

} // namespace hx::sim
