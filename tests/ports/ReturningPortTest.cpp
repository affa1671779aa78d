// A port that goes away and comes back in the midst of an update.
#include "ports/ReturningPort.h"

#include "host/image/ImageBuilder.h"
#include "host/image/ImageFile.h"
#include "host/product/PluginLoader.h"
#include "host/update/UpdateRun.h"
#include "ports/PortMemory.h"
#include "ports/SimulatedPort.h"
#include "tests/ports/SimulatedExchange.h"

#include <gtest/gtest.h>

namespace hx {

namespace {

// A product that is plugged in under a new number each time; ports opened before are gone then.
class Socket {
public:
    // Gone after this many messages and answers; negative: never.
    int messagesUntilLoss = -1;
    int answersUntilLoss = -1;
    bool isAway = false; // and stays so
    bool comesBack = true;
    int number = 20;
    int opened = 0;
    SimulatedPort wire{sim::FaultyProduct(sim::SimulatedProduct(sim::valdrin()))};

    QString portName() const { return QStringLiteral("Boot:Boot %1:0").arg(number); }

    void pullOut()
    {
        number += 4;
        isAway = !comesBack;
    }

    QList<MidiBackend> present() const
    {
        MidiBackend backend;
        backend.name = QStringLiteral("jack");
        backend.outputs = QStringList{"Piano 16:0"};
        if (!isAway)
            backend.outputs.prepend(portName());
        backend.inputs = backend.outputs;
        return {backend};
    }
};

class SocketPort final : public MidiPort {
public:
    explicit SocketPort(Socket& socket) : m_socket(socket), m_number(socket.number)
    {
        ++m_socket.opened;
    }

    QString name() const override { return QStringLiteral("jack:Boot:Boot %1:0").arg(m_number); }
    PortIdentity identity() const override { return identityOfPort("jack", m_socket.portName()); }
    Clock& clock() override { return m_socket.wire.clock(); }
    bool isGone() const override { return m_number != m_socket.number || m_socket.isAway; }

    qint64 send(const QByteArray& message) override
    {
        count(&m_socket.messagesUntilLoss);
        return isPresent() ? m_socket.wire.send(message) : 0;
    }
    MidiChunk receive(Microseconds deadline) override
    {
        MidiChunk chunk;
        if (isPresent())
            chunk = m_socket.wire.receive(deadline);
        if (!chunk.bytes.isEmpty())
            count(&m_socket.answersUntilLoss);
        return isPresent() ? chunk : MidiChunk();
    }
    bool drain(Microseconds) override { return isPresent(); }

private:
    void count(int* left)
    {
        if (*left == 0)
            m_socket.pullOut();
        *left -= *left >= 0 ? 1 : 0;
    }
    bool isPresent()
    {
        errorText = isGone() ? QStringLiteral("it was pulled out") : QString();
        return !isGone();
    }

    Socket& m_socket;
    int m_number;
};

class Returning : public ::testing::Test {
protected:
    Returning()
        : m_memory({"jack", socket.portName(), socket.portName()}, socket.present()),
          port(std::make_unique<SocketPort>(socket), socket.wire.clock(),
               {[this] { return reopen(); }, [this] { return mayReturn; },
                [this](const QString& text) { told << text; }})
    {
    }

    UpdateResult update()
    {
        DeviceInterface& device = m_loaded.plugin->device();
        const ProductDescription product = describeProduct(device);
        const BuiltImage built =
            buildImage(product, QByteArray(500, '\x2A'), CodeType::Fwu, QStringLiteral("1.0.2.4"));
        PortBus bus(port);
        device.bus = &bus;
        const UpdateResult result =
            runUpdate(device, bus, parseUpdateImage(imageFileOf(built.messages), product));
        device.bus = nullptr;
        return result;
    }

    Socket socket;
    QStringList told;
    bool mayReturn = true;

private:
    Result<std::unique_ptr<MidiPort>> reopen()
    {
        const Result<PortAddress> found = m_memory.find(socket.present());
        if (!found)
            return found.problem();
        EXPECT_EQ(found->output, socket.portName());
        return std::unique_ptr<MidiPort>(std::make_unique<SocketPort>(socket));
    }

    PortMemory m_memory;
    PluginLoadResult m_loaded = loadPlugin(QStringLiteral(HX_PLUGIN_FILE));

protected:
    ReturningPort port;
};

} // namespace

TEST_F(Returning, AnUpdateGoesOnWhenThePortComesBackBetweenAnyTwoMessages)
{
    const UpdateResult undisturbed = update();
    ASSERT_EQ(undisturbed.outcome, UpdateOutcome::Succeeded);
    constexpr int messages = 13; // the questions among them
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
    EXPECT_EQ(port.send(identify), identify.size());
    EXPECT_EQ(told, QStringList({"it was pulled out; it is waited for 5 seconds",
                                 "the port jack:Boot:Boot 20:0 is back, as jack:Boot:Boot 24:0"}));
    EXPECT_EQ(port.name(), "jack:Boot:Boot 20:0");
    EXPECT_EQ(port.identity().name, "Boot:Boot");
    EXPECT_FALSE(port.isGone());
    EXPECT_TRUE(port.drain(port.clock().now()));
}

TEST_F(Returning, APortThatDoesNotComeBackIsGoneAfterFiveSeconds)
{
    socket.comesBack = false;
    socket.messagesUntilLoss = 0;
    EXPECT_EQ(port.send(identify), 0);
    EXPECT_EQ(port.clock().now(), 5 * microsecondsPerSecond);
    EXPECT_TRUE(port.isGone());
    EXPECT_EQ(port.errorText, "it was pulled out");
    socket.isAway = false;
    EXPECT_EQ(port.send(identify), 0) << "it is not looked for any more";
    EXPECT_EQ(port.receive(port.clock().now() + 1000).bytes, "");
    EXPECT_EQ(port.errorText, "it was pulled out");
    EXPECT_FALSE(port.drain(port.clock().now()));
}

TEST_F(Returning, APortWhoseServerIsGoneIsNotWaitedFor)
{
    mayReturn = false;
    socket.messagesUntilLoss = 0;
    EXPECT_EQ(port.send(identify), 0);
    EXPECT_EQ(port.clock().now(), 0);
    EXPECT_EQ(port.errorText, "it was pulled out");
    EXPECT_TRUE(port.isGone());
    EXPECT_EQ(told, QStringList());
    EXPECT_EQ(socket.opened, 1);
}

TEST_F(Returning, AWaitGoesOnUntilItsDeadlineWhileThePortIsAway)
{
    socket.isAway = true;
    EXPECT_EQ(port.receive(100000).bytes, "");
    EXPECT_EQ(port.errorText, "");
    EXPECT_EQ(port.clock().now(), 100000);
    EXPECT_FALSE(port.isGone());
    EXPECT_EQ(port.receive(9 * microsecondsPerSecond).bytes, "");
    EXPECT_EQ(port.clock().now(), 250000) << "the next look";
    socket.isAway = false;
    EXPECT_EQ(port.receive(9 * microsecondsPerSecond).bytes, "");
    EXPECT_EQ(told.size(), 2);
    EXPECT_EQ(port.send(identify), identify.size());
    const MidiChunk answer = port.receive(9 * microsecondsPerSecond);
    EXPECT_EQ(answer.bytes, identityReply);
    EXPECT_EQ(answer.lostBefore, 1) << "a message that was under way has lost its rest";
    EXPECT_EQ(port.send(identify), identify.size());
    EXPECT_EQ(port.receive(9 * microsecondsPerSecond).lostBefore, 0);
}

} // namespace hx
