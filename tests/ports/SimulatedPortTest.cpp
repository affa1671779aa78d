#include "ports/SimulatedPort.h"
#include "tests/ports/SimulatedExchange.h"
#include "tests/support/Valdrin.h"

#include <gtest/gtest.h>

namespace hx {

namespace {

SimulatedPortOptions options(qint64 bytesPerSecond, Microseconds gap, int chunkSize)
{
    SimulatedPortOptions result;
    result.pace = {bytesPerSecond, gap};
    result.chunkSize = chunkSize;
    return result;
}

} // namespace

TEST(SimulatedPort, ReplyComesAfterTheProductsDelay)
{
    SimulatedPort port{sim::FaultyProduct(sim::SimulatedProduct(sim::valdrin()))};
    EXPECT_EQ(port.name(), QStringLiteral("simulator"));
    ASSERT_EQ(port.send(identify), identify.size());
    EXPECT_EQ(port.clock().now(), 0);
    const MidiChunk chunk = port.receive(microsecondsPerSecond);
    EXPECT_EQ(chunk.bytes, identityReply);
    EXPECT_EQ(chunk.time, 1000);
    EXPECT_EQ(port.clock().now(), 1000);
    EXPECT_TRUE(port.errorText.isEmpty());
}

TEST(SimulatedPort, WaitingForNothingMovesTheClockToTheDeadline)
{
    SimulatedPort port{sim::FaultyProduct(sim::SimulatedProduct(sim::valdrin()))};
    const MidiChunk chunk = port.receive(25 * microsecondsPerSecond);
    EXPECT_TRUE(chunk.bytes.isEmpty());
    EXPECT_EQ(chunk.time, 25 * microsecondsPerSecond);
    EXPECT_EQ(port.clock().now(), 25 * microsecondsPerSecond);
    EXPECT_TRUE(port.errorText.isEmpty());
    EXPECT_TRUE(port.receive(5).bytes.isEmpty()); // a deadline in the past
    EXPECT_EQ(port.clock().now(), 25 * microsecondsPerSecond);
}

TEST(SimulatedPort, ReplyAfterTheDeadlineComesWithTheNextReceive)
{
    SimulatedPort port{sim::FaultyProduct(sim::SimulatedProduct(sim::valdrin()))};
    port.send(identify);
    EXPECT_TRUE(port.receive(999).bytes.isEmpty());
    EXPECT_EQ(port.clock().now(), 999);
    EXPECT_EQ(port.receive(1000).bytes, identityReply);
    EXPECT_TRUE(port.receive(microsecondsPerSecond).bytes.isEmpty());
}

TEST(SimulatedPort, ReplyThatIsOverdueKeepsItsTimeOfArrival)
{
    SimulatedPort port{sim::FaultyProduct(sim::SimulatedProduct(sim::valdrin()))};
    port.send(identify);
    port.clock().sleepUntil(microsecondsPerSecond);
    const MidiChunk chunk = port.receive(0);
    EXPECT_EQ(chunk.bytes, identityReply);
    EXPECT_EQ(chunk.time, 1000);
    EXPECT_EQ(port.clock().now(), microsecondsPerSecond);
}

TEST(SimulatedPort, BytesTravelAtTheGivenPaceBothWays)
{
    SimulatedPort port(sim::FaultyProduct(sim::SimulatedProduct(sim::valdrin())),
                       options(dinBytesPerSecond, 0, 0));
    port.send(identify);
    EXPECT_EQ(port.clock().now(), 6 * 320);
    EXPECT_EQ(port.receive(microsecondsPerSecond).time, 6 * 320 + 1000 + 17 * 320);
}

TEST(SimulatedPort, GapLiesBetweenTwoMessages)
{
    SimulatedPort port(sim::FaultyProduct(sim::SimulatedProduct(sim::valdrin())),
                       options(dinBytesPerSecond, 5000, 0));
    port.send(identify);
    EXPECT_EQ(port.clock().now(), 1920);
    port.send(identify);
    EXPECT_EQ(port.clock().now(), 1920 + 5000 + 1920);
}

TEST(SimulatedPort, RepliesAreCutIntoChunks)
{
    SimulatedPort port(sim::FaultyProduct(sim::SimulatedProduct(sim::valdrin())),
                       options(dinBytesPerSecond, 0, 7));
    port.send(identify);
    for (const int end : {7, 14, 17}) {
        const MidiChunk chunk = port.receive(microsecondsPerSecond);
        EXPECT_EQ(chunk.bytes, identityReply.mid(end == 17 ? 14 : end - 7, end == 17 ? 3 : 7));
        EXPECT_EQ(chunk.time, 1920 + 1000 + end * 320);
    }
    EXPECT_TRUE(port.receive(microsecondsPerSecond).bytes.isEmpty());
}

TEST(SimulatedPort, ChunksOfOneMomentKeepTheirOrder)
{
    SimulatedPort port(sim::FaultyProduct(sim::SimulatedProduct(sim::valdrin())), options(0, 0, 1));
    port.send(identify + identify);
    QByteArray bytes;
    for (MidiChunk chunk = port.receive(microsecondsPerSecond); !chunk.bytes.isEmpty();
         chunk = port.receive(microsecondsPerSecond))
        bytes += chunk.bytes;
    EXPECT_EQ(bytes, identityReply + identityReply);
}

TEST(SimulatedPort, DelayedReplyIsOvertakenByTheNext)
{
    SimulatedPort port(productWith("delay-reply:1:2500"));
    port.send(identify);
    EXPECT_TRUE(port.receive(2200000).bytes.isEmpty());
    port.send(QByteArray::fromHex("F0006B2D30412EF7"));
    EXPECT_EQ(port.receive(10 * microsecondsPerSecond).bytes,
              QByteArray::fromHex("F0006B2D30412E31303233F7"));
    const MidiChunk late = port.receive(10 * microsecondsPerSecond);
    EXPECT_EQ(late.bytes, identityReply);
    EXPECT_EQ(late.time, 2501000);
}

TEST(SimulatedPort, VanishedProductTakesThePortWithIt)
{
    SimulatedPort port(productWith("vanish:2"));
    ASSERT_EQ(port.send(identify), identify.size());
    EXPECT_EQ(port.send(identify), 0);
    const QString gone = QStringLiteral("the port \"simulator\" is gone: the simulated product was "
                                        "unplugged; plug it in again and start over");
    EXPECT_EQ(port.errorText, gone);
    port.errorText.clear();
    const MidiChunk chunk = port.receive(microsecondsPerSecond);
    EXPECT_TRUE(chunk.bytes.isEmpty());
    EXPECT_EQ(port.errorText, gone);
    EXPECT_EQ(port.clock().now(), 0);
    EXPECT_EQ(port.send(identify), 0);
}

TEST(SimulatedPort, NoiseComesUnaskedEvery20Milliseconds)
{
    SimulatedPort port(productWith("noise"));
    const QByteArray noise = QByteArray::fromHex("F8FE");
    for (const Microseconds expected : {0, 20000, 40000, 60000}) {
        const MidiChunk chunk = port.receive(microsecondsPerSecond);
        EXPECT_EQ(chunk.bytes, noise);
        EXPECT_EQ(chunk.time, expected);
    }
    EXPECT_TRUE(port.receive(79999).bytes.isEmpty());
}

TEST(SimulatedPort, NoiseDoesNotPileUpWhileNobodyListens)
{
    SimulatedPort port(productWith("noise"));
    port.receive(0);
    port.clock().sleepUntil(3600 * microsecondsPerSecond);
    int chunks = 0;
    while (!port.receive(port.clock().now()).bytes.isEmpty() && chunks < 100)
        ++chunks;
    EXPECT_LE(chunks, 2);
}

TEST(SimulatedPort, RepliesThatNobodyTakesAreLostInTheEnd)
{
    SimulatedPort port{sim::FaultyProduct(sim::SimulatedProduct(sim::valdrin()))};
    for (int i = 0; i < SimulatedPort::queueLimit + 100; ++i)
        ASSERT_EQ(port.send(identify), identify.size());
    int received = 0;
    while (!port.receive(microsecondsPerSecond).bytes.isEmpty())
        ++received;
    EXPECT_EQ(received, SimulatedPort::queueLimit);
}

TEST(SimulatedPort, ProductCanBeLookedAtAndChanged)
{
    SimulatedPort port{sim::FaultyProduct(sim::SimulatedProduct(sim::valdrin()))};
    port.product().damageCode(0);
    EXPECT_NE(port.product().codeBytes(), sim::SimulatedProduct(sim::valdrin()).codeBytes());
    EXPECT_EQ(&port.product(), &port.device().product());
}

} // namespace hx
