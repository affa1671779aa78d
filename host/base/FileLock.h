/** @file
 * Keeps a second program away from a file.
 */
#pragma once

#include "host/base/Result.h"

#include <QFile>
#include <QString>

namespace hx {

/** Where the lock of the file that `name` leads to, by whatever links, lies. */
QString lockName(const QString& name);

/**
 * The lock of FILE is FILE.lock beside it, held by the system for as long as the program lives: a
 * program that is killed leaves the file, but not the lock.
 */
class FileLock {
public:
    FileLock() = default;
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /**
     * Locks the file that `name` leads to, by whatever links; it need not be there. Fails when
     * another program has it or a lock cannot be made. Once only.
     */
    Result<> take(const QString& name);

private:
    Result<> takeOnce();
    bool isStillThere(const QString& lock) const;

    QString m_name; /**< of the lock; empty while there is none to give back */
    QFile m_file;
};

} // namespace hx
