#include "host/base/FileLock.h"

#include "host/base/FileName.h"
#include "host/base/WholeFile.h"

#include <QCoreApplication>

#include <cerrno>

#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace hx {

namespace {

constexpr int mostLockAttempts = 100; // whoever had the lock may take its file away at any moment
constexpr int longestMark = 64;
const char lockMark[] = "process ";

} // namespace

QString lockName(const QString& name)
{
    return fileNameText(resolvedPath(name).string() + ".lock");
}

FileLock::~FileLock()
{
    if (!m_name.isEmpty())
        unlink(fileNameBytes(m_name).constData());
}

Result<> FileLock::take(const QString& name)
{
    const QString lock = lockName(name);
    for (int i = 0; i < mostLockAttempts; ++i) {
        m_file.close();
        Result<> taken = openFile(m_file, lock, QIODevice::ReadWrite);
        if (taken)
            taken = takeOnce();
        if (!taken)
            return taken;
        if (!isStillThere(lock))
            continue;
        m_name = lock;
        m_file.resize(0);
        m_file.write(lockMark + QByteArray::number(QCoreApplication::applicationPid()) + '\n');
        m_file.flush();
        return {};
    }
    return fileProblem(QStringLiteral("it cannot be locked: its lock comes and goes"));
}

// Fails too when the file is none of ours: it must not be overwritten.
Result<> FileLock::takeOnce()
{
    const QByteArray found = m_file.read(longestMark).trimmed();
    if (!found.isEmpty() && !found.startsWith(lockMark))
        return fileProblem(QStringLiteral("the file of that name and \".lock\" is not a lock"));
    if (flock(m_file.handle(), LOCK_EX | LOCK_NB) == 0)
        return {};
    if (errno != EWOULDBLOCK)
        return fileProblem(qt_error_string(errno));
    return fileProblem(
        QStringLiteral("another program uses it (%1)").arg(QString::fromLatin1(found)));
}

bool FileLock::isStillThere(const QString& lock) const
{
    struct stat mine = {};
    struct stat there = {};
    const QByteArray name = fileNameBytes(lock);
    return fstat(m_file.handle(), &mine) == 0 && stat(name.constData(), &there) == 0 &&
           mine.st_ino == there.st_ino && mine.st_dev == there.st_dev;
}

} // namespace hx
