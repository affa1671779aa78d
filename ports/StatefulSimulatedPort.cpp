#include "ports/StatefulSimulatedPort.h"

namespace hx {

Result<std::unique_ptr<StatefulSimulatedPort>>
StatefulSimulatedPort::open(const QString& path, sim::FaultyProduct product,
                            const SimulatedPortOptions& options, const OnSaveError& onSaveError)
{
    Result<std::unique_ptr<ProductStateFile>> file =
        ProductStateFile::open(path, product.product());
    if (!file)
        return file.problem();
    std::unique_ptr<StatefulSimulatedPort> port(
        new StatefulSimulatedPort(path, product, options, onSaveError));
    port->m_file = std::move(*file);
    return port;
}

StatefulSimulatedPort::StatefulSimulatedPort(const QString& path, const sim::FaultyProduct& product,
                                             const SimulatedPortOptions& options,
                                             const OnSaveError& onSaveError)
    : m_path(path), m_port(product, options), m_onSaveError(onSaveError)
{
}

StatefulSimulatedPort::~StatefulSimulatedPort()
{
    const Result<> closed = m_file->close(m_port.product());
    if (!closed)
        m_onSaveError(closed.problem().what);
}

qint64 StatefulSimulatedPort::send(const QByteArray& message)
{
    const qint64 accepted = m_port.send(message);
    errorText = m_port.errorText;
    const Result<> kept = m_file->keep(m_port.product());
    if (kept)
        return accepted;
    m_goneText = QStringLiteral("the port \"%1\" is gone: the simulated product cannot store what "
                                "it receives (%2)")
                     .arg(name(), kept.problem().what);
    errorText = m_goneText;
    return 0;
}

MidiChunk StatefulSimulatedPort::receive(Microseconds deadline)
{
    if (!m_goneText.isEmpty()) {
        errorText = m_goneText;
        return {};
    }
    MidiChunk chunk = m_port.receive(deadline);
    errorText = m_port.errorText;
    return chunk;
}

} // namespace hx
