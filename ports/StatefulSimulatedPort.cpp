#include "ports/StatefulSimulatedPort.h"

#include "host/base/FileName.h"
#include "host/base/WholeFile.h"

namespace hx {

namespace {

// More than the text of the largest memory, which has 16 MiB.
constexpr qint64 maxStateFileBytes = Q_INT64_C(64) * 1024 * 1024;

bool readState(SimulatedProduct& product, const QString& path, QString* error)
{
    if (path.isEmpty()) {
        *error = QStringLiteral("it has no name");
        return false;
    }
    std::error_code unseen;
    if (!std::filesystem::exists(filePath(path), unseen) && !unseen)
        return true;
    QByteArray state;
    if (!readWholeFile(path, maxStateFileBytes, &state, error))
        return false;
    if (state.size() > maxStateFileBytes) {
        *error = QStringLiteral("it is larger than %1 bytes, which no memory of a product is")
                     .arg(maxStateFileBytes);
        return false;
    }
    return product.restore(state, error);
}

} // namespace

bool restoreProduct(SimulatedProduct& product, const QString& path, QString* error)
{
    return readState(product, path, error) && saveProduct(product, path, error);
}

bool saveProduct(const SimulatedProduct& product, const QString& path, QString* error)
{
    return writeWholeFile(path, product.save(), error);
}

std::unique_ptr<StatefulSimulatedPort>
StatefulSimulatedPort::open(const QString& path, const FaultPlan& faults,
                            const SimulatedPortOptions& options, const OnSaveError& onSaveError,
                            QString* error)
{
    SimulatedProduct product;
    if (!restoreProduct(product, path, error))
        return nullptr;
    return std::unique_ptr<StatefulSimulatedPort>(
        new StatefulSimulatedPort(path, FaultyProduct(product, faults), options, onSaveError));
}

StatefulSimulatedPort::StatefulSimulatedPort(const QString& path, const FaultyProduct& product,
                                             const SimulatedPortOptions& options,
                                             const OnSaveError& onSaveError)
    : m_path(path), m_port(product, options), m_onSaveError(onSaveError)
{
}

StatefulSimulatedPort::~StatefulSimulatedPort()
{
    QString error;
    if (!saveProduct(m_port.product(), m_path, &error))
        m_onSaveError(error);
}

bool StatefulSimulatedPort::send(const QByteArray& message)
{
    const bool sent = m_port.send(message);
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
