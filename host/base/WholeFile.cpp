#include "host/base/WholeFile.h"

#include "host/base/FileName.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace hx {

namespace {

namespace fs = std::filesystem;

constexpr int mostAttempts = 100; // at a name for a new file that no other file has

bool writeTo(QFileDevice& file, const QByteArray& content)
{
    return file.write(content) == content.size() && file.flush();
}

// A system that takes a part of the content has met no error yet.
QString reason(const QFileDevice& file)
{
    return file.error() == QFileDevice::NoError
               ? QStringLiteral("there is no room for all of it; free some")
               : file.errorString();
}

int flagsOf(QIODevice::OpenMode mode)
{
    const bool writes = mode.testFlag(QIODevice::WriteOnly);
    const bool keeps = mode.testFlag(QIODevice::Append) || mode.testFlag(QIODevice::ReadOnly);
    int flags = writes ? O_WRONLY | O_CREAT : O_RDONLY;
    if (writes && mode.testFlag(QIODevice::ReadOnly))
        flags = O_RDWR | O_CREAT;
    if (mode.testFlag(QIODevice::NewOnly))
        flags |= O_EXCL;
    if (mode.testFlag(QIODevice::Append))
        flags |= O_APPEND;
    return writes && !keeps ? flags | O_TRUNC : flags;
}

// QSaveFile would put a regular file in the place of a device.
bool isSpecial(const fs::path& path)
{
    std::error_code error; // what cannot be looked at fails when it is written
    return fs::exists(path, error) && !fs::is_regular_file(path, error) &&
           !fs::is_directory(path, error);
}

bool writeSpecial(const QString& name, const QByteArray& content, QString* error)
{
    QFile file;
    if (!openFile(file, name, QIODevice::WriteOnly, error))
        return false;
    if (writeTo(file, content))
        return true;
    *error = reason(file);
    return false;
}

// A file beside `target`, which takes its place and its permissions once all is in it. What
// QSaveFile does, for names of any bytes.
class Replacement {
public:
    explicit Replacement(const fs::path& target) : m_target(target) {}
    ~Replacement()
    {
        if (!m_path.empty())
            unlink(m_path.c_str());
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    bool write(const QByteArray& content, QString* error)
    {
        if (!open(error))
            return false;
        if (!writeTo(m_file, content)) {
            *error = reason(m_file);
            return false;
        }
        takePermissions();
        fsync(m_file.handle()); // some systems cannot; what they took is all that can be had
        m_file.close();
        return takePlace(error);
    }

private:
    bool open(QString* error)
    {
        for (int i = 0; i < mostAttempts; ++i) {
            const std::string ending = '.' + std::to_string(getpid()) + '-' + std::to_string(i);
            const fs::path path = m_target.string() + ending;
            const QString name = fileNameText(path.string());
            if (openFile(m_file, name, QIODevice::WriteOnly | QIODevice::NewOnly, error)) {
                m_path = path;
                return true;
            }
            if (errno != EEXIST)
                return false;
        }
        return false;
    }

    void takePermissions()
    {
        struct stat status = {};
        if (stat(m_target.c_str(), &status) == 0)
            fchmod(m_file.handle(), status.st_mode & 07777);
    }

    bool takePlace(QString* error)
    {
        if (rename(m_path.c_str(), m_target.c_str()) != 0) {
            *error = qt_error_string(errno);
            return false;
        }
        m_path.clear();
        return true;
    }

    fs::path m_target;
    fs::path m_path; // empty while there is nothing to remove
    QFile m_file;
};

} // namespace

bool openFile(QFile& file, const QString& name, QIODevice::OpenMode mode, QString* error)
{
    const int descriptor = ::open(fileNameBytes(name).constData(), flagsOf(mode) | O_CLOEXEC, 0666);
    if (descriptor < 0) {
        const int code = errno;
        *error = qt_error_string(code);
        errno = code;
        return false;
    }
    // A buffer of its own would forget why a part of it was not taken.
    const QIODevice::OpenMode direct =
        mode.testFlag(QIODevice::WriteOnly) ? mode | QIODevice::Unbuffered : mode;
    return file.open(descriptor, direct, QFileDevice::AutoCloseHandle);
}

bool readWholeFile(const QString& name, qint64 limit, QByteArray* content, QString* error)
{
    std::error_code unseen; // opening says why
    const fs::path path = filePath(name);
    if (fs::is_directory(path, unseen))
        *error = QStringLiteral("it is a folder");
    else if (fs::exists(path, unseen) && !fs::is_regular_file(path, unseen))
        *error = QStringLiteral("it is no regular file");
    else {
        QFile file;
        if (!openFile(file, name, QIODevice::ReadOnly, error))
            return false;
        *content = file.read(limit + 1);
        *error = file.error() == QFileDevice::NoError ? QString() : file.errorString();
        return error->isEmpty();
    }
    return false;
}

bool writeWholeFile(const QString& name, const QByteArray& content, QString* error)
{
    const fs::path target = resolvedPath(name);
    std::error_code unseen;
    if (isSpecial(target))
        return writeSpecial(name, content, error);
    if (fs::is_directory(target, unseen)) {
        *error = QStringLiteral("it is a folder");
        return false;
    }
    return Replacement(target).write(content, error);
}

} // namespace hx
