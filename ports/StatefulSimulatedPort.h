/** @file
 * A simulated product whose memory outlives the program, in a state file.
 */
#pragma once

#include "ports/ProductStateFile.h"
#include "ports/SimulatedPort.h"

#include <functional>
#include <memory>

namespace hx {

class StatefulSimulatedPort final : public MidiPort {
public:
    using OnSaveError = std::function<void(const QString&)>;

    /**
     * Plugs in `product` with the memory that `path` holds, or as it is when there is no such file
     * yet. When a change cannot be kept, the product stops before it answers, as without power: the
     * port is gone. `onSaveError` is told why when the port is closed.
     */
    static Result<std::unique_ptr<StatefulSimulatedPort>> open(const QString& path,
                                                               sim::FaultyProduct product,
                                                               const SimulatedPortOptions& options,
                                                               const OnSaveError& onSaveError);

    ~StatefulSimulatedPort() override;

    QString name() const override { return QStringLiteral("simulator:") + m_path; }
    Clock& clock() override { return m_port.clock(); }
    PortIdentity identity() const override { return {m_port.name(), m_path, name(), QString()}; }
    qint64 send(const QByteArray& message) override;
    MidiChunk receive(Microseconds deadline) override;
    bool isGone() const override { return !m_goneText.isEmpty() || m_port.isGone(); }

private:
    StatefulSimulatedPort(const QString& path, const sim::FaultyProduct& product,
                          const SimulatedPortOptions& options, const OnSaveError& onSaveError);

    QString m_path;
    QString m_goneText; /**< why the product stopped; empty while it runs */
    SimulatedPort m_port;
    OnSaveError m_onSaveError;
    std::unique_ptr<ProductStateFile> m_file;
};

} // namespace hx
