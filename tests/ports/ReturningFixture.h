// A port that goes away and comes back in the midst of an update, and what is behind it then.
#pragma once

#include "ports/ReturningPort.h"

#include "host/image/ImageBuilder.h"
#include "host/image/ImageFile.h"
#include "host/product/PluginLoader.h"
#include "host/update/UpdateRun.h"
#include "ports/PortMemory.h"
#include "ports/SimulatedPort.h"
#include "tests/ports/SimulatedExchange.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <optional>

namespace hx {

inline sim::FaultyProduct productOf(const sim::ProductIdentity& identity,
                                    const char* serial = "Unit0001",
                                    const sim::FaultPlan& faults = {})
{
    sim::SimulatedProductSettings settings;
    settings.serialNumber.emplace();
    std::copy_n(serial, 8, settings.serialNumber->begin());
    return sim::FaultyProduct(sim::SimulatedProduct(identity, settings), faults);
}

inline sim::ProductIdentity otherModel()
{
    sim::ProductIdentity identity = sim::valdrin();
    ++identity.model;
    return identity;
}

// A product that is plugged in under a new name or number each time; ports opened before are gone
// then.
class Socket {
public:
    // Gone after this many messages and answers; negative: never.
    int messagesUntilLoss = -1;
    int answersUntilLoss = -1;
    bool isAway = false; // and stays so
    bool comesBack = true;
    int number = 20;
    int opened = 0;
    QStringList names; // one after the other, instead of a new number each time
    QStringList beside{"Piano 16:0"};
    std::optional<sim::FaultyProduct> substitute; // what is behind the port when it is back
    QList<QByteArray> heardBySubstitute;
    SimulatedPort wire{productOf(sim::valdrin())};

    QString portName() const
    {
        return names.isEmpty() ? QStringLiteral("Boot:Boot %1:0").arg(number)
                               : names.at((number / 4) % names.size());
    }

    void pullOut()
    {
        number += 4;
        isAway = !comesBack;
        if (substitute)
            wire.device() = *substitute;
    }

    void hear(const QByteArray& message)
    {
        if (substitute && opened > 1)
            heardBySubstitute << message;
    }

    QList<MidiBackend> present() const
    {
        MidiBackend backend;
        backend.name = QStringLiteral("jack");
        backend.outputs = beside;
        if (!isAway)
            backend.outputs.prepend(portName());
        backend.inputs = backend.outputs;
        return {backend};
    }
};

class SocketPort final : public MidiPort {
public:
    explicit SocketPort(Socket& socket)
        : m_socket(socket), m_number(socket.number), m_name("jack:" + socket.portName())
    {
        ++m_socket.opened;
    }

    QString name() const override { return m_name; }
    PortIdentity identity() const override { return identityOfPort("jack", m_socket.portName()); }
    Clock& clock() override { return m_socket.wire.clock(); }
    bool isGone() const override { return m_number != m_socket.number || m_socket.isAway; }

    qint64 send(const QByteArray& message) override
    {
        count(&m_socket.messagesUntilLoss);
        if (!isPresent())
            return 0;
        m_socket.hear(message);
        return m_socket.wire.send(message);
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
    QString m_name;
};

constexpr int questions = 3; // before the first message of the image: identity, version, serial
constexpr int imageMessages = 7;

class Returning : public ::testing::Test {
protected:
    Returning() { plugIn(); }

    // From here on the port is the one that the socket has now.
    void plugIn()
    {
        socket.opened = 0;
        m_memory.emplace(PortAddress{"jack", socket.portName(), socket.portName()},
                         socket.present());
        const ReturningPort::Ways ways = {[this] { return reopen(); }, [this] { return mayReturn; },
                                          [this](BusEventKind kind, const QString& text) {
                                              told << text;
                                              kinds << kind;
                                              if (onTold)
                                                  onTold(kind);
                                          }};
        m_port = std::make_unique<ReturningPort>(std::make_unique<SocketPort>(socket),
                                                 socket.wire.clock(), ways);
    }

    ReturningPort& port() { return *m_port; }

    // Whether nothing but questions for its identity has reached the product that came instead.
    bool substituteWasOnlyAsked() const
    {
        const QByteArray serialRead =
            HxMidiData(m_loaded.plugin->device().lookupStr("esn.read")).bytes;
        return !socket.heardBySubstitute.isEmpty() &&
               std::all_of(socket.heardBySubstitute.begin(), socket.heardBySubstitute.end(),
                           [&](const QByteArray& message) {
                               return message == identify || message == serialRead;
                           });
    }

    // The port goes away before the message of this number of the image and comes back as the
    // socket has it.
    UpdateResult updateWithLossAt(int message)
    {
        socket.messagesUntilLoss = questions + message - 1;
        return update();
    }

    UpdateResult update()
    {
        DeviceInterface& device = m_loaded.plugin->device();
        const ProductDescription product = describeProduct(device);
        const Result<BuiltImage> built =
            buildImage(product, QByteArray(500, '\x2A'), CodeType::Fwu, QStringLiteral("1.0.2.4"));
        PortBus bus(port());
        device.bus = &bus;
        UpdateOptions options;
        options.confirm = [](const UpdateResult&) { return true; };
        const UpdateResult result = runUpdate(
            device, bus, parseUpdateImage(imageFileOf(built->messages), product), options);
        device.bus = nullptr;
        return result;
    }

    Socket socket;
    QStringList told;
    QList<BusEventKind> kinds;
    std::function<void(BusEventKind)> onTold;
    bool mayReturn = true;

private:
    Result<std::unique_ptr<MidiPort>> reopen()
    {
        const Result<PortAddress> found = m_memory->find(socket.present());
        if (!found)
            return found.problem();
        EXPECT_EQ(found->output, socket.portName());
        return std::unique_ptr<MidiPort>(std::make_unique<SocketPort>(socket));
    }

    std::optional<PortMemory> m_memory;
    PluginLoadResult m_loaded = loadPlugin(QStringLiteral(HX_PLUGIN_FILE));
    std::unique_ptr<ReturningPort> m_port;
};

} // namespace hx
