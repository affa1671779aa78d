// Power that fails after any single memory write: code that is not whole is never called valid, and
// the next update mends the product.
#include "qt/Saturated.h"
#include "simulator/Crc32.h"

#include "tests/simulator/UpdateMessages.h"
#include "tests/support/Valdrin.h"

#include <gtest/gtest.h>

namespace hx::sim {

namespace {

const QByteArray newCode = codeOfSize(230);
const QVector<QByteArray> newImage = imageOf(newCode, "2345");

SimulatedProduct productAfter(int messages)
{
    SimulatedProduct product{valdrin()};
    for (const QByteArray& message : newImage.mid(0, messages))
        product.receive(message);
    return product;
}

qint64 writesOf(SimulatedProduct product, const QByteArray& message)
{
    const qint64 before = product.memoryWrites();
    product.receive(message);
    return product.memoryWrites() - before;
}

void expectHonestMemory(const SimulatedProduct& product)
{
    if (!product.isCodeValid())
        return;
    EXPECT_EQ(product.code().crc, productCrc32(product.codeBytes()));
}

void expectMendedByUpdate(SimulatedProduct product)
{
    for (const QByteArray& message : newImage)
        EXPECT_EQ(hexOf(product.receive(message).value(0).bytes).right(5), "00 F7");
    EXPECT_EQ(product.codeBytes(), newCode);
    EXPECT_TRUE(product.isCodeValid());
}

} // namespace

TEST(PowerCut, AfterAnyWriteOfAnyMessageTheMemoryIsHonest)
{
    int cuts = 0;
    for (int number = 0; number < newImage.size(); ++number) {
        const SimulatedProduct before = productAfter(number);
        const qint64 writes = writesOf(before, newImage.at(number));
        for (qint64 write = 0; write < writes; ++write, ++cuts) {
            SimulatedProduct product = before;
            product.failPowerAfter(write);
            ASSERT_TRUE(product.receive(newImage.at(number)).isEmpty()) << number << "." << write;
            ASSERT_EQ(product.memoryWrites() - before.memoryWrites(), write);
            ASSERT_FALSE(product.isUpdating());
            expectHonestMemory(product);
            expectMendedByUpdate(product);
        }
    }
    EXPECT_EQ(cuts, 3 + 230 + 3); // erase, code bytes, seal
}

// What the product calls valid is the old code or the new one, whole; an unsteady checksum or
// version is never that of valid code.
TEST(PowerCut, InsideAnyWriteOfAnyMessageTheMemoryIsHonest)
{
    const SimulatedProduct fresh{valdrin()};
    for (int number = 0; number < newImage.size(); ++number) {
        const SimulatedProduct before = productAfter(number);
        const qint64 writes = writesOf(before, newImage.at(number));
        for (qint64 write = 0; write < writes; ++write) {
            for (const CutWrite cut : {CutWrite::Half, CutWrite::Unsteady}) {
                SimulatedProduct product = before;
                product.failPowerAfter(write, cut);
                ASSERT_TRUE(product.receive(newImage.at(number)).isEmpty());
                for (int reading = 0; reading < 4; ++reading) {
                    expectHonestMemory(product);
                    ASSERT_TRUE(!product.isCodeValid() || product.codeBytes() == newCode ||
                                product.codeBytes() == fresh.codeBytes());
                    answers(product, "F07E7F0601F7");
                }
                expectMendedByUpdate(product);
            }
        }
    }
}

TEST(PowerCut, InsideACodeByteLeavesHalfOfItsBits)
{
    SimulatedProduct product = productAfter(0);
    product.failPowerAfter(3 + 2, CutWrite::Half); // erase, two bytes
    product.receive(newImage.first());
    QByteArray held = newCode.left(3);
    held[2] = static_cast<char>(held.at(2) | 0xF0);
    EXPECT_EQ(product.codeBytes(), held);
    answers(product, "F07E7F0601F7");
    EXPECT_EQ(product.codeBytes(), held);
}

TEST(PowerCut, InsideAnErasureLeavesHalfOfTheBlock)
{
    SimulatedProduct product = productAfter(0);
    const QByteArray factory = product.codeBytes();
    product.failPowerAfter(1, CutWrite::Half);
    product.receive(newImage.first());
    EXPECT_FALSE(product.isCodeValid());
    EXPECT_EQ(product.codeBytes(), factory.left(128) + QByteArray(128, '\xFF'));
}

TEST(PowerCut, InsideTheChecksumLeavesHalfOfIt)
{
    SimulatedProduct product = productAfter(static_cast<int>(newImage.size()) - 1);
    product.failPowerAfter(1, CutWrite::Half);
    product.receive(newImage.last());
    EXPECT_FALSE(product.isCodeValid());
    EXPECT_EQ(product.code().crc, productCrc32(newCode) & 0xFFFF0000u);
}

TEST(PowerCut, AnUnsteadyMarkReadsDifferentlyEachTimeUntilItIsErased)
{
    SimulatedProduct product = productAfter(static_cast<int>(newImage.size()) - 1);
    product.failPowerAfter(2, CutWrite::Unsteady);
    product.receive(newImage.last());
    EXPECT_EQ(answers(product, "F0006B2D30412EF7"), "F0 00 6B 2D 30 41 2E 32 33 34 35 F7");
    EXPECT_EQ(answers(product, "F0006B2D30412EF7"), "F0 00 6B 2D 30 41 2E 46 F7");
    EXPECT_EQ(answers(product, "F0006B2D30412EF7"), "F0 00 6B 2D 30 41 2E 32 33 34 35 F7");
    product.receive(newImage.first());
    EXPECT_FALSE(product.isCodeValid());
    answers(product, "F0006B2D30412EF7");
    EXPECT_FALSE(product.isCodeValid());
}

TEST(PowerCut, InsideTheClearingOfAMarkTheCodeIsNoLongerValid)
{
    SimulatedProduct product = productAfter(0);
    ASSERT_TRUE(product.isCodeValid());
    product.failPowerAfter(0, CutWrite::Half);
    EXPECT_TRUE(product.receive(newImage.first()).isEmpty());
    EXPECT_FALSE(product.isCodeValid());
}

TEST(PowerCut, InsideTheClearingOfAClearMarkCallsNothingValid)
{
    SimulatedProduct product = productAfter(1);
    product.failPowerAfter(0, CutWrite::Unsteady);
    EXPECT_TRUE(product.receive(newImage.first()).isEmpty());
    for (int reading = 0; reading < 4; ++reading) {
        EXPECT_EQ(answers(product, "F0006B2D30412EF7"), "F0 00 6B 2D 30 41 2E 46 F7");
        EXPECT_FALSE(product.isCodeValid());
    }
}

TEST(PowerCut, AnUnsteadyCodeByteStaysSoUntilItsBlockIsErased)
{
    SimulatedProduct product = productAfter(0);
    product.failPowerAfter(3, CutWrite::Unsteady);
    product.receive(newImage.first());
    const QByteArray first = product.codeBytes();
    answers(product, "F07E7F0601F7");
    EXPECT_NE(product.codeBytes(), first);
    product.failPowerAfter(1); // the mark is erased, the block is not
    product.receive(newImage.first());
    const QByteArray second = product.codeBytes();
    answers(product, "F07E7F0601F7");
    EXPECT_NE(product.codeBytes(), second);
    expectMendedByUpdate(product);
}

TEST(PowerCut, BeforeTheFirstWriteTheOldCodeStaysValid)
{
    SimulatedProduct product{valdrin()};
    const QByteArray factory = product.codeBytes();
    product.failPowerAfter(0);
    EXPECT_TRUE(product.receive(newImage.first()).isEmpty());
    EXPECT_TRUE(product.isCodeValid());
    EXPECT_EQ(product.codeBytes(), factory);
    EXPECT_EQ(product.mode(), ProductMode::User);
}

TEST(PowerCut, InTheMiddleOfADataMessageLeavesItsBeginning)
{
    SimulatedProduct product = productAfter(1);
    product.failPowerAfter(5);
    EXPECT_TRUE(product.receive(newImage.at(1)).isEmpty());
    EXPECT_EQ(product.codeBytes(), newCode.left(117));
    EXPECT_FALSE(product.isCodeValid());
    EXPECT_EQ(product.mode(), ProductMode::Boot);
}

TEST(PowerCut, JustBeforeTheMarkOfValidityTheCodeIsNotValid)
{
    SimulatedProduct product = productAfter(saturated(newImage.size()) - 1);
    product.failPowerAfter(2);
    product.receive(closing());
    EXPECT_EQ(product.codeBytes(), newCode);
    EXPECT_FALSE(product.isCodeValid());
}

TEST(PowerCut, EraseGoesFromTheEndInBlocks)
{
    SimulatedProduct product{valdrin()};
    for (const QByteArray& message : imageOf(codeOfSize(9000), "1000"))
        product.receive(message);
    product.failPowerAfter(2); // the mark, and the last of three blocks
    product.receive(newImage.first());
    EXPECT_EQ(product.codeBytes(), codeOfSize(8192));
    EXPECT_FALSE(product.isCodeValid());
}

TEST(PowerCut, HappensOnce)
{
    SimulatedProduct product{valdrin()};
    product.failPowerAfter(0);
    product.receive(newImage.first());
    expectMendedByUpdate(product);
}

TEST(PowerCut, MessagesThatWriteNothingAreNotStruck)
{
    SimulatedProduct product{valdrin()};
    product.failPowerAfter(0);
    EXPECT_EQ(answers(product, "F0006B2D30412FF7"), "F0 00 6B 2D 30 41 2F 00 30 00 41 F7");
}

TEST(PowerCut, PowerCycleCallsOffThePlannedCut)
{
    SimulatedProduct product{valdrin()};
    product.failPowerAfter(3);
    product.powerCycle();
    expectMendedByUpdate(product);
}

TEST(PowerCut, OtherMessagesInTheSameChunkAreStillAnswered)
{
    SimulatedProduct product{valdrin()};
    product.failPowerAfter(0);
    EXPECT_EQ(answers(product, newImage.first() + bytesOf("F0006B2D30412FF7")),
              "F0 00 6B 2D 30 41 2F 00 30 00 41 F7");
}

} // namespace hx::sim
