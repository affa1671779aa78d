#include "ports/ProductServer.h"
#include "ports/ChunkQueue.h"
#include "ports/StatefulSimulatedPort.h"
#include "tests/ports/SimulatedExchange.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/ScriptedPort.h"
#include "tests/support/Valdrin.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <thread>

namespace hx {

TEST(ProductServer, AnswersWhatArrivesAfterTheProductsDelay)
{
    ScriptedPort port;
    sim::FaultyProduct product{sim::SimulatedProduct(sim::valdrin())};
    ProductServer server(port, product);
    QByteArray heard;
    QByteArray answered;
    int handled = 0;
    server.setWatch({[&](const MidiChunk& chunk) { heard += chunk.bytes; },
                     [&] {
                         handled += answered.isEmpty() ? 1 : 0;
                         return true;
                     },
                     [&](const QByteArray& bytes) { answered += bytes; }});
    port.arrive(identify.left(3), 100);
    port.arrive(identify.mid(3), 200);
    EXPECT_TRUE(server.serve(50000));
    EXPECT_TRUE(server.serve(50000));
    EXPECT_TRUE(port.sent.empty());
    EXPECT_TRUE(server.serve(50000));
    ASSERT_EQ(port.sent.size(), 1u);
    EXPECT_EQ(port.sent[0], identityReply);
    EXPECT_EQ(port.clock().now(), 1200);
    EXPECT_EQ(heard, identify);
    EXPECT_EQ(answered, identityReply);
    EXPECT_EQ(handled, 2);
}

TEST(ProductServer, WaitsNoLongerThanItIsTold)
{
    ScriptedPort port;
    sim::FaultyProduct product{sim::SimulatedProduct(sim::valdrin())};
    ProductServer server(port, product);
    EXPECT_TRUE(server.serve(50000));
    EXPECT_EQ(port.clock().now(), 50000);
}

TEST(ProductServer, SendsNoiseUnasked)
{
    ScriptedPort port;
    sim::FaultyProduct product = productWith("noise");
    ProductServer server(port, product);
    while (port.clock().now() < 100000)
        ASSERT_TRUE(server.serve(50000));
    EXPECT_EQ(port.sent.size(), 5u); // at 0, 20, 40, 60 and 80 ms
    EXPECT_EQ(port.sent[0], QByteArray::fromHex("F8FE"));
}

TEST(ProductServer, EndsWhenTheProductIsUnplugged)
{
    ScriptedPort port;
    sim::FaultyProduct product = productWith("vanish:1");
    ProductServer server(port, product);
    port.arrive(identify);
    EXPECT_FALSE(server.serve(50000));
    EXPECT_TRUE(server.errorText.isEmpty());
}

TEST(ProductServer, EndsWhenThePortFails)
{
    ScriptedPort port;
    sim::FaultyProduct product{sim::SimulatedProduct(sim::valdrin())};
    ProductServer server(port, product);
    port.lostAt = 10;
    EXPECT_FALSE(server.serve(50000));
    EXPECT_EQ(server.errorText, "unplugged");

    ScriptedPort mute;
    mute.sendError = "full";
    mute.arrive(identify);
    ProductServer second(mute, product);
    EXPECT_TRUE(second.serve(50000));
    EXPECT_FALSE(second.serve(50000));
    EXPECT_EQ(second.errorText, "full");
}

// A product that acknowledged what it could not store would be called updated.
TEST(ProductServer, DoesNotAnswerWhatCouldNotBeStored)
{
    ScriptedPort port;
    sim::FaultyProduct product{sim::SimulatedProduct(sim::valdrin())};
    ProductServer server(port, product);
    server.setWatch({nullptr, [] { return false; }, nullptr});
    port.arrive(identify);
    EXPECT_FALSE(server.serve(50000));
    EXPECT_EQ(server.errorText, "");
    EXPECT_TRUE(port.sent.empty());
}

TEST(ProductServer, EndsWhenInputWasLost)
{
    ScriptedPort port;
    sim::FaultyProduct product{sim::SimulatedProduct(sim::valdrin())};
    ProductServer server(port, product);
    port.arriveAfterLoss(identify, 70);
    EXPECT_FALSE(server.serve(50000));
    EXPECT_EQ(server.errorText,
              "70 bytes of input were lost: more waited to be read than the port keeps");
    EXPECT_TRUE(port.sent.empty());
}

TEST(ChunkQueue, GivesChunksInOrderAcrossThreads)
{
    ChunkQueue queue;
    std::thread sender([&queue] {
        for (int i = 0; i < 1000; ++i)
            queue.put({QByteArray(1, char(i)), i});
    });
    for (int i = 0; i < 1000; ++i) {
        const auto chunk = queue.take(10000000);
        ASSERT_TRUE(chunk.has_value());
        EXPECT_EQ(chunk->time, i);
        EXPECT_EQ(chunk->bytes, QByteArray(1, char(i)));
    }
    sender.join();
    EXPECT_FALSE(queue.take(0).has_value());
    EXPECT_FALSE(queue.take(-5).has_value());
}

TEST(ChunkQueue, HoldsABoundedNumberOfBytesAndTheNextChunkTellsOfTheRest)
{
    ChunkQueue queue;
    const QByteArray block(1024 * 1024, 'x');
    for (int i = 0; i < 6; ++i)
        queue.put({block, i});
    for (int i = 0; i < 4; ++i) {
        const auto chunk = queue.take(0);
        ASSERT_TRUE(chunk.has_value());
        EXPECT_EQ(chunk->time, i);
        EXPECT_EQ(chunk->lostBefore, 0);
    }
    EXPECT_FALSE(queue.take(0).has_value());
    queue.put({block, 9});
    queue.put({block, 10});
    const auto chunk = queue.take(0);
    ASSERT_TRUE(chunk.has_value());
    EXPECT_EQ(chunk->time, 9);
    EXPECT_EQ(chunk->lostBefore, 2 * block.size());
    EXPECT_EQ(queue.take(0)->lostBefore, 0);
}

const QByteArray startsUpdate = QByteArray::fromHex("F0006B2D3041430A000000000000000350707E0142F7");

class StatefulPort : public ::testing::Test {
protected:
    std::unique_ptr<StatefulSimulatedPort> open(const QString& path)
    {
        auto opened = StatefulSimulatedPort::open(
            path, sim::FaultyProduct(sim::SimulatedProduct(sim::valdrin())), {},
            [this](const QString& error) { saveError = error; });
        if (opened)
            return std::move(*opened);
        openError = opened.problem().what;
        return nullptr;
    }

    QString inFolder(const char* name) const
    {
        return m_folder.filePath(QString::fromLatin1(name));
    }

    QString openError;
    QString saveError;

private:
    QTemporaryDir m_folder;
};

TEST_F(StatefulPort, ProductKeepsItsMemoryFromOnePortToTheNext)
{
    {
        const auto port = open(inFolder("state"));
        ASSERT_NE(port, nullptr) << openError.toStdString();
        EXPECT_EQ(port->name(), "simulator:" + inFolder("state"));
        ASSERT_EQ(port->send(startsUpdate), startsUpdate.size());
    }
    EXPECT_EQ(saveError, "");
    const auto port = open(inFolder("state"));
    ASSERT_NE(port, nullptr) << openError.toStdString();
    ASSERT_TRUE(port->send(QByteArray::fromHex("F0006B2D30412EF7")));
    EXPECT_EQ(port->receive(1000000).bytes, QByteArray::fromHex("F0006B2D30412E46F7"));
}

TEST_F(StatefulPort, FileThatIsNoStateFileIsRefusedAndKept)
{
    QFile file(inFolder("other"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("my diary");
    file.close();
    EXPECT_EQ(open(inFolder("other")), nullptr);
    EXPECT_FALSE(openError.isEmpty());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "my diary");
}

TEST_F(StatefulPort, StateThatCannotBeReadIsRefused)
{
    QDir().mkpath(inFolder("folder"));
    EXPECT_EQ(open(inFolder("folder")), nullptr);
    EXPECT_FALSE(openError.isEmpty());
}

TEST_F(StatefulPort, APlaceThatCannotKeepTheStateIsRefused)
{
    EXPECT_EQ(open(inFolder("no/such/folder/state")), nullptr);
    EXPECT_EQ(openError, "No such file or directory");
}

TEST_F(StatefulPort, AMessageThatCannotBeStoredIsNotAcknowledged)
{
    auto port = open(inFolder("state"));
    ASSERT_NE(port, nullptr) << openError.toStdString();
    {
        const FileSizeLimit noRoom(10);
        EXPECT_EQ(port->send(startsUpdate), 0);
    }
    const QString gone =
        "the port \"" + port->name() +
        "\" is gone: the simulated product cannot store what it receives (there is "
        "no room for all of it; free some)";
    EXPECT_EQ(port->errorText, gone);
    EXPECT_TRUE(port->receive(1000000).bytes.isEmpty());
    EXPECT_EQ(port->errorText, gone);
    EXPECT_TRUE(port->isGone());
    EXPECT_EQ(saveError, "");
    port.reset();
    EXPECT_EQ(saveError, "there is no room for all of it; free some");
}

TEST_F(StatefulPort, StateThatCannotBeTidiedAtTheEndIsReported)
{
    const QString folder = inFolder("folder");
    ASSERT_TRUE(QDir().mkpath(folder));
    auto port = open(folder + "/state");
    ASSERT_NE(port, nullptr) << openError.toStdString();
    ASSERT_EQ(port->send(startsUpdate), startsUpdate.size());
    ASSERT_TRUE(QDir(folder).removeRecursively());
    port.reset();
    EXPECT_EQ(saveError, "No such file or directory");
}

} // namespace hx
