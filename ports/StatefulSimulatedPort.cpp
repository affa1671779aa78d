#include "ports/StatefulSimulatedPort.h"

namespace hx {

std::unique_ptr<StatefulSimulatedPort>
StatefulSimulatedPort::open(const QString& path, sim::FaultyProduct product,
                            const SimulatedPortOptions& options, const OnSaveError& onSaveError,
                            QString* error)
{
    std::unique_ptr<ProductStateFile> file = ProductStateFile::open(path, product.product(), error);
    if (!file)
        return nullptr;
    std::unique_ptr<StatefulSimulatedPort> port(
        new StatefulSimulatedPort(path, product, options, onSaveError));
    port->m_file = std::move(file);
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
    QString error;
    if (!m_file->close(m_port.product(), &error))
        m_onSaveError(error);
}

bool StatefulSimulatedPort::send(const QByteArray& message)
{
    const bool sent = m_port.send(message);
    m_file->keep(m_port.product());
    errorText = m_port.errorText;
    return sent;
}

MidiChunk StatefulSimulatedPort::receive(Microseconds deadline)
{
    MidiChunk chunk = m_port.receive(deadline);
    errorText = m_port.errorText;
    return chunk;
}

} // namespace hx
