#include "ports/ProductStateFile.h"

#include "host/base/FileName.h"
#include "host/base/WholeFile.h"

#include <filesystem>
#include <optional>
#include <utility>

namespace hx {

namespace {

// More than the text of the largest memory, which has 16 MiB.
constexpr qint64 maxStateFileBytes = Q_INT64_C(64) * 1024 * 1024;

bool isThere(const QString& path)
{
    std::error_code unseen; // what cannot be looked at fails when it is read or written
    return std::filesystem::exists(filePath(path), unseen) || unseen;
}

// Nothing else may get a lock beside it.
bool isFileOrNothing(const QString& path)
{
    std::error_code unseen;
    return !isThere(path) || std::filesystem::is_regular_file(filePath(path), unseen) || unseen;
}

} // namespace

ProductStateFile::ProductStateFile(const QString& path) : m_path(path) {}

Result<std::unique_ptr<ProductStateFile>> ProductStateFile::open(const QString& path,
                                                                 sim::SimulatedProduct& product)
{
    std::unique_ptr<ProductStateFile> file(new ProductStateFile(path));
    const Result<> ready = file->lockAndRead(product);
    if (!ready)
        return ready.problem();
    return file;
}

Result<> ProductStateFile::lockAndRead(sim::SimulatedProduct& product)
{
    if (m_path.isEmpty())
        return fileProblem(QStringLiteral("it has no name"));
    if (!isFileOrNothing(m_path))
        return fileProblem(QStringLiteral("it is not a regular file"));
    Result<> locked = m_lock.take(m_path);
    if (!locked)
        return locked;
    return isThere(m_path) ? read(product) : writeWhole(product);
}

Result<> ProductStateFile::read(sim::SimulatedProduct& product)
{
    const Result<QByteArray> state = readWholeFile(m_path, maxStateFileBytes);
    if (!state)
        return state.problem();
    QFile writable; // what cannot be written is of no use
    Result<> opened = openFile(writable, m_path, QIODevice::ReadWrite);
    if (!opened)
        return opened;
    if (state->size() > maxStateFileBytes)
        return fileProblem(
            QStringLiteral("it is larger than %1 bytes, more than the memory of any product")
                .arg(maxStateFileBytes));
    QString error;
    if (!product.restore(*state, &error))
        return fileProblem(error);
    return {};
}

Result<> ProductStateFile::writeWhole(const sim::SimulatedProduct& product)
{
    m_end.close();
    return writeWholeFile(m_path, product.save());
}

// A line at the end is cheap, however much code there is. The first change goes into a whole text,
// because the file may end in a line that was not finished when a program was killed; so does one
// from address 0 on, with which the lines before it lose their meaning.
Result<> ProductStateFile::write(sim::SimulatedProduct& product, int address)
{
    if (m_end.isOpen() && address > 0)
        return writeAll(m_end, product.saveChange(address));
    Result<> written = writeWhole(product);
    if (!written)
        return written;
    return openFile(m_end, m_path,
                    QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered);
}

Result<> ProductStateFile::keep(sim::SimulatedProduct& product)
{
    const std::optional<int> address = product.takeChange();
    if (address && m_kept) {
        m_changed = true;
        m_kept = write(product, *address);
    }
    return m_kept;
}

Result<> ProductStateFile::close(sim::SimulatedProduct& product)
{
    Result<> kept = keep(product);
    if (!kept || !std::exchange(m_changed, false))
        return kept;
    return writeWhole(product);
}

} // namespace hx
