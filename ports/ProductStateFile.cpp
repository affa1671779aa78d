#include "ports/ProductStateFile.h"

#include "host/base/FileName.h"
#include "host/base/WholeFile.h"

#include <filesystem>
#include <optional>

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

std::unique_ptr<ProductStateFile>
ProductStateFile::open(const QString& path, sim::SimulatedProduct& product, QString* error)
{
    std::unique_ptr<ProductStateFile> file(new ProductStateFile(path));
    if (path.isEmpty())
        *error = QStringLiteral("it has no name");
    else if (!isFileOrNothing(path))
        *error = QStringLiteral("it is no regular file");
    else if (file->m_lock.take(path, error) &&
             (isThere(path) ? file->read(product, error) : file->writeWhole(product, error)))
        return file;
    return nullptr;
}

bool ProductStateFile::read(sim::SimulatedProduct& product, QString* error)
{
    QByteArray state;
    if (!readWholeFile(m_path, maxStateFileBytes, &state, error))
        return false;
    QFile writable; // what cannot be written is of no use
    if (!openFile(writable, m_path, QIODevice::ReadWrite, error))
        return false;
    if (state.size() > maxStateFileBytes) {
        *error = QStringLiteral("it is larger than %1 bytes, which no memory of a product is")
                     .arg(maxStateFileBytes);
        return false;
    }
    return product.restore(state, error);
}

bool ProductStateFile::writeWhole(const sim::SimulatedProduct& product, QString* error)
{
    m_end.close();
    return writeWholeFile(m_path, product.save(), error);
}

// A line at the end is cheap, however much code there is. The first change goes into a whole text,
// because the file may end in a line that was not finished when a program was killed; so does one
// from address 0 on, with which the lines before it lose their meaning.
void ProductStateFile::keep(sim::SimulatedProduct& product)
{
    const std::optional<int> address = product.takeChange();
    if (!address || m_failed)
        return;
    m_changed = true;
    if (m_end.isOpen() && *address > 0) {
        const QByteArray line = product.saveChange(*address);
        m_failed = m_end.write(line) != line.size();
        return;
    }
    QString error;
    m_failed = !writeWhole(product, &error) ||
               !openFile(m_end, m_path,
                         QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered, &error);
}

bool ProductStateFile::close(sim::SimulatedProduct& product, QString* error)
{
    keep(product);
    const bool good = !m_changed || writeWhole(product, error);
    m_changed = false;
    return good;
}

} // namespace hx
