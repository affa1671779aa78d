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

Result<> writeSpecial(const QString& name, const QByteArray& content)
{
    QFile file;
    const Result<> opened = openFile(file, name, QIODevice::WriteOnly);
    return opened ? writeAll(file, content) : opened;
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

    Result<> write(const QByteArray& content)
    {
        Result<> done = open();
        if (done)
            done = writeAll(m_file, content);
        if (!done)
            return done;
        takePermissions();
        fsync(m_file.handle()); // some systems cannot; what they took is all that can be had
        m_file.close();
        return takePlace();
    }

private:
    Result<> open()
    {
        Result<> opened;
        for (int i = 0; i < mostAttempts; ++i) {
            const std::string ending = '.' + std::to_string(getpid()) + '-' + std::to_string(i);
            const fs::path path = m_target.string() + ending;
            const QString name = fileNameText(path.string());
            opened = openFile(m_file, name, QIODevice::WriteOnly | QIODevice::NewOnly);
            if (opened)
                m_path = path;
            if (opened || errno != EEXIST)
                break;
        }
        return opened;
    }

    void takePermissions()
    {
        struct stat status = {};
        if (stat(m_target.c_str(), &status) == 0)
            fchmod(m_file.handle(), status.st_mode & 07777);
    }

    Result<> takePlace()
    {
        if (rename(m_path.c_str(), m_target.c_str()) != 0)
            return fileProblem(qt_error_string(errno));
        m_path.clear();
        return {};
    }

    fs::path m_target;
    fs::path m_path; // empty while there is nothing to remove
    QFile m_file;
};

} // namespace

Result<> openFile(QFile& file, const QString& name, QIODevice::OpenMode mode)
{
    const int descriptor = ::open(fileNameBytes(name).constData(), flagsOf(mode) | O_CLOEXEC, 0666);
    if (descriptor < 0) {
        const int code = errno;
        Problem problem = fileProblem(qt_error_string(code));
        errno = code;
        return problem;
    }
    // A buffer of its own would forget why a part of it was not taken.
    const QIODevice::OpenMode direct =
        mode.testFlag(QIODevice::WriteOnly) ? mode | QIODevice::Unbuffered : mode;
    if (!file.open(descriptor, direct, QFileDevice::AutoCloseHandle))
        return fileProblem(file.errorString());
    return {};
}

// A system that takes a part of the content has met no error yet.
Result<> writeAll(QFile& file, const QByteArray& content)
{
    if (file.write(content) == content.size() && file.flush())
        return {};
    return fileProblem(file.error() == QFileDevice::NoError
                           ? QStringLiteral("there is no room for all of it; free some")
                           : file.errorString());
}

namespace {

Result<> openRegular(QFile& file, const QString& name, QIODevice::OpenMode mode)
{
    std::error_code unseen; // opening says why
    const fs::path path = filePath(name);
    if (fs::is_directory(path, unseen))
        return fileProblem(QStringLiteral("it is a folder"));
    if (fs::exists(path, unseen) && !fs::is_regular_file(path, unseen))
        return fileProblem(QStringLiteral("it is not a regular file"));
    return openFile(file, name, mode);
}

Result<QByteArray> contentOf(QFile& file, qint64 limit)
{
    QByteArray content = file.read(limit + 1);
    if (file.error() != QFileDevice::NoError)
        return fileProblem(file.errorString());
    return content;
}

} // namespace

Result<QByteArray> readWholeFile(const QString& name, qint64 limit)
{
    QFile file;
    const Result<> opened = openRegular(file, name, QIODevice::ReadOnly);
    return opened ? contentOf(file, limit) : opened.problem();
}

Result<QByteArray> readSecretFile(const QString& name, qint64 limit)
{
    QFile file;
    const Result<> opened = openRegular(file, name, QIODevice::ReadOnly | QIODevice::Unbuffered);
    if (!opened)
        return opened.problem();
    struct stat status = {};
    if (fstat(file.handle(), &status) != 0)
        return fileProblem(qt_error_string(errno));
    if ((status.st_mode & (S_IROTH | S_IWOTH)) != 0)
        return fileProblem(QStringLiteral("all users of this machine may read or change it, its "
                                          "mode is %1")
                               .arg(status.st_mode & 07777, 4, 8, QLatin1Char('0')));
    return contentOf(file, limit);
}

Result<> writeWholeFile(const QString& name, const QByteArray& content)
{
    const fs::path target = resolvedPath(name);
    std::error_code unseen;
    if (isSpecial(target))
        return writeSpecial(name, content);
    if (fs::is_directory(target, unseen))
        return fileProblem(QStringLiteral("it is a folder"));
    return Replacement(target).write(content);
}

} // namespace hx
