#include "apps/hxhost/session/TraceOutput.h"

#include "host/base/FileName.h"
#include "host/base/WholeFile.h"

#include <unistd.h>

namespace hx::host {

namespace {

namespace fs = std::filesystem;

fs::path numbered(const fs::path& file, int number)
{
    return number == 0 ? file : fs::path(file.string() + '.' + std::to_string(number));
}

// Makes room at `file`: each older one moves on by a number, up to the first that is free.
Result<> keepOlder(const fs::path& file)
{
    std::error_code unseen; // a number that cannot be looked at cannot be written either
    int free = 1;
    while (fs::exists(fs::symlink_status(numbered(file, free), unseen)))
        ++free;
    std::error_code failure;
    for (int number = free; number > 0 && !failure; --number)
        fs::rename(numbered(file, number - 1), numbered(file, number), failure);
    if (failure)
        return fileProblem(QStringLiteral("the trace that is there cannot be kept: ") +
                           QString::fromStdString(failure.message()));
    return {};
}

} // namespace

Result<> TraceOutput::setUp(const QString& name)
{
    m_name = name;
    open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    std::error_code unseen;
    const fs::path place = resolvedPath(name);
    const bool isFull = fs::is_regular_file(place, unseen) && fs::file_size(place, unseen) > 0;
    if (!isFull)
        return openFile(m_file, name, QIODevice::WriteOnly);
    QFile file;
    Result<> opened = openFile(file, name, QIODevice::WriteOnly | QIODevice::Append);
    if (opened && access(place.parent_path().c_str(), W_OK) != 0)
        return fileProblem(
            QStringLiteral("the trace that is there cannot be kept: its folder is read-only"));
    return opened;
}

Result<> TraceOutput::start()
{
    if (!isWaiting())
        return m_started;
    m_started = keepOlder(resolvedPath(m_name));
    if (m_started)
        m_started = openFile(m_file, m_name, QIODevice::WriteOnly);
    if (m_started && writeData(m_waiting.constData(), m_waiting.size()) != m_waiting.size())
        m_started = fileProblem(m_file.errorString());
    m_waiting.clear();
    return m_started;
}

qint64 TraceOutput::readData(char*, qint64)
{
    return -1;
}

qint64 TraceOutput::writeData(const char* bytes, qint64 size)
{
    if (isWaiting()) {
        m_waiting.append(bytes, int(size));
        return size;
    }
    if (!m_started)
        return -1;
    const bool isWritten = m_file.write(bytes, size) == size && m_file.flush();
    return isWritten ? size : -1;
}

} // namespace hx::host
