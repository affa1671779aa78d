// A simulated product whose memory outlives the program, in a state file.
#pragma once

#include "ports/SimulatedPort.h"

#include <functional>
#include <memory>

namespace hx {

class StatefulSimulatedPort final : public MidiPort {
public:
    using OnSaveError = std::function<void(const QString&)>;

    // Plugs in the product that `path` describes, a fresh one when there is no such file yet; null,
    // with the reason in `error`, when the file is not a state file or cannot be written. When the
    // port is closed the product's state is written back; `onSaveError` is told when it cannot be.
    static std::unique_ptr<StatefulSimulatedPort> open(const QString& path, const FaultPlan& faults,
                                                       const SimulatedPortOptions& options,
                                                       const OnSaveError& onSaveError,
                                                       QString* error);

    ~StatefulSimulatedPort() override;

    QString name() const override { return QStringLiteral("simulator:") + m_path; }
    Clock& clock() override { return m_port.clock(); }
    bool send(const QByteArray& message) override;
    MidiChunk receive(Microseconds deadline) override;

private:
    StatefulSimulatedPort(const QString& path, const FaultyProduct& product,
                          const SimulatedPortOptions& options, const OnSaveError& onSaveError);

    QString m_path;
    SimulatedPort m_port;
    OnSaveError m_onSaveError;
};

// The two steps by themselves, for a product that is driven in another way. Restoring writes the
// state too, so that a place that cannot keep it is known before the product is used.
bool restoreProduct(SimulatedProduct& product, const QString& path, QString* error);
bool saveProduct(const SimulatedProduct& product, const QString& path, QString* error);

} // namespace hx
