// The course of an update: what the product takes and what its memory then holds.
#include "simulator/Crc32.h"

#include "tests/simulator/UpdateFixture.h"
#include "tests/support/Valdrin.h"

#include <random>

namespace hx::sim {

TEST_F(Update, TheWorkedExampleByteForByte)
{
    EXPECT_EQ(answers(product, "F0 00 6B 2D 30 41 43 0A  00 00  00 00 00 00 00  03  "
                               "50 70 7E 01  42  F7"),
              good);
    EXPECT_EQ(answers(product, "F0 00 6B 2D 30 41 43 0C  00 00 00 00 03  06 0C 19 1A 0C  "
                               "31 30 32 34  01  1C  F7"),
              good);
    EXPECT_EQ(answers(product, "F0 00 6B 2D 30 41 F7"), good);
    EXPECT_EQ(hexOf(product.codeBytes()), "F0 7E 81");
    EXPECT_TRUE(product.isCodeValid());
}

TEST_F(Update, MemoryHoldsTheCodeAndReportsItsVersionAndChecksum)
{
    sendAll(image);
    EXPECT_EQ(product.codeBytes(), code);
    EXPECT_TRUE(product.isCodeValid());
    EXPECT_FALSE(product.isUpdating());
    EXPECT_EQ(product.mode(), ProductMode::User);
    EXPECT_EQ(answers(product, "F07E7F0601F7"),
              "F0 7E 00 06 02 00 6B 2D 30 00 41 00 31 30 32 34 F7");
    EXPECT_EQ(answers(product, "F0006B2D30412EF7"), "F0 00 6B 2D 30 41 2E 31 30 32 34 F7");
    const QByteArray crc = hexOf(groups(productCrc32(code), 4));
    EXPECT_EQ(answers(product, "F0006B2D304130F7"), "F0 00 6B 2D 30 41 30 " + crc + " F7");
    EXPECT_EQ(answers(product, "F0006B2D304131F7"), "F0 00 6B 2D 30 41 31 " + crc + " F7");
}

TEST_F(Update, KindFwdIsAcknowledgedAsSuch)
{
    const QVector<QByteArray> fwd = imageOf(code, "1024", kindFwd);
    for (const QByteArray& message : fwd)
        EXPECT_EQ(send(message), goodFwd);
    EXPECT_EQ(send(closing()), goodFwd);
    EXPECT_EQ(product.codeBytes(), code);
    EXPECT_EQ(product.code().kind, kindFwd);
}

TEST_F(Update, FullMemoryOf1MiB)
{
    const QByteArray large = codeOfSize(0x100000);
    sendAll(imageOf(large, "1024"));
    EXPECT_EQ(product.codeBytes(), large);
    EXPECT_TRUE(product.isCodeValid());
}

TEST_F(Update, OneByteIsCodeEnough)
{
    sendAll(imageOf("\xFF", "0001"));
    EXPECT_EQ(product.codeBytes(), "\xFF");
}

TEST_F(Update, CodeOfWholeMessagesEndsWithAFullOne)
{
    const QByteArray whole = codeOfSize(224);
    sendAll(imageOf(whole, "0001"));
    EXPECT_EQ(product.codeBytes(), whole);
}

TEST_F(Update, AnyChunkingGivesTheSameAnswers)
{
    QByteArray bytes = bytesOf("F07E7F0601F7");
    for (const QByteArray& message : image)
        bytes += message + bytesOf("F8 F0006B2D30412EF7");
    const QByteArray expected = answers(product, bytes);
    std::mt19937 random(2024);
    for (int round = 0; round < 500; ++round) {
        SimulatedProduct other{valdrin()};
        QByteArray text;
        for (int at = 0; at < bytes.size();) {
            const int size = 1 + static_cast<int>(random() % static_cast<unsigned>(round % 40 + 1));
            const QByteArray answer = answers(other, bytes.mid(at, size));
            text += (text.isEmpty() || answer.isEmpty() ? "" : " | ") + answer;
            at += size;
        }
        ASSERT_EQ(text, expected) << "round " << round;
        ASSERT_EQ(other.codeBytes(), code) << "round " << round;
    }
}

TEST_F(Update, OtherCommandsBetweenTheMessagesDoNotDisturb)
{
    for (const QByteArray& message : image) {
        EXPECT_EQ(send(message), good);
        answers(product, "F07E7F0601F7 F0006B2D304130F7 F0006B2D304131F7 F0006B2D304177F7");
    }
    EXPECT_EQ(product.codeBytes(), code);
    EXPECT_TRUE(product.isCodeValid());
}

TEST_F(Update, FirstMessageErasesTheCode)
{
    EXPECT_EQ(send(image.at(0)), good);
    EXPECT_EQ(product.codeBytes(), code.left(112));
    EXPECT_FALSE(product.isCodeValid());
    EXPECT_TRUE(product.isUpdating());
    EXPECT_EQ(product.mode(), ProductMode::Boot);
}

TEST_F(Update, FirstMessageStartsOverAtAnyTime)
{
    for (int sent = 1; sent <= image.size(); ++sent) {
        sendAll(image.mid(0, sent));
        const QByteArray other = codeOfSize(200).mid(7);
        sendAll(imageOf(other, "2000", sent % 2 == 0 ? kindFwd : kindFwu));
        EXPECT_EQ(product.codeBytes(), other) << sent;
        EXPECT_TRUE(product.isCodeValid()) << sent;
    }
}

TEST_F(Update, EachMessageButTheFirstMayComeAgainAndIsNotWrittenAgain)
{
    sendAll({image.first()});
    for (const QByteArray& message : image.mid(1)) {
        EXPECT_EQ(send(message), good);
        const QByteArray held = product.codeBytes();
        const qint64 writes = product.memoryWrites();
        EXPECT_EQ(send(message), good);
        EXPECT_EQ(send(message), good);
        EXPECT_EQ(product.codeBytes(), held);
        EXPECT_EQ(product.memoryWrites(), writes);
    }
    EXPECT_EQ(product.codeBytes(), code);
}

TEST_F(Update, FirstMessageThatComesAgainIsWrittenAgain)
{
    sendAll({image.first()});
    product.damageCode(5);
    sendAll({image.first()});
    EXPECT_EQ(product.codeBytes(), code.left(112));
    sendAll(image.mid(1));
    EXPECT_EQ(product.codeBytes(), code);
}

TEST_F(Update, OnlyTheLastMessageMayComeAgain)
{
    sendAll({image.at(0), image.at(1), image.at(2)});
    EXPECT_EQ(send(image.at(1)), failed);
    EXPECT_FALSE(product.isUpdating());
}

TEST_F(Update, SameNumberWithOtherCodeIsNoRepetition)
{
    sendAll({image.at(0), image.at(1)});
    EXPECT_EQ(send(dataMessage(1, 112, QByteArray(112, 'x'))), failed);
}

TEST_F(Update, FirstMessageComesAgainAfterAFailureAndStartsAnew)
{
    sendAll({image.at(0)});
    EXPECT_EQ(send(image.at(2)), failed);
    const qint64 writes = product.memoryWrites();
    sendAll(image);
    EXPECT_GT(product.memoryWrites(), writes);
    EXPECT_EQ(product.codeBytes(), code);
}

TEST_F(Update, ResetEndsTheUpdate)
{
    for (const char* restart :
         {"F0006B2D30411B0958F7", "F0006B2D30411C01F7", "F0006B2D30411C02F7"}) {
        sendAll({image.at(0)});
        EXPECT_EQ(answers(product, restart), "");
        EXPECT_EQ(send(image.at(1)), failed) << restart;
    }
    sendAll(image);
    EXPECT_EQ(answers(product, "F0006B2D30411C00F7"), "");
    EXPECT_EQ(send(closing()), failed);
    EXPECT_TRUE(product.isCodeValid());
}

TEST_F(Update, UpdateIsTakenInEveryMode)
{
    for (const char* mode : {"F0006B2D30411C00F7", "F0006B2D30411C01F7", "F0006B2D30411C02F7"}) {
        EXPECT_EQ(answers(product, mode), "");
        sendAll(image);
        EXPECT_TRUE(product.isCodeValid()) << mode;
    }
}

TEST_F(Update, CutMessageIsNotAnsweredAndMayComeAgain)
{
    sendAll({image.at(0)});
    EXPECT_EQ(send(image.at(1).left(60)), "");
    EXPECT_EQ(send(image.at(1)), good);
    EXPECT_EQ(send(image.at(2)), good);
}

} // namespace hx::sim
