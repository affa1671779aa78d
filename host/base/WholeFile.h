// Reads and writes files in one go. Names are those of host/base/FileName.h.
#pragma once

#include "host/base/Result.h"

#include <QByteArray>
#include <QFile>
#include <QString>

namespace hx {

// Opens what `name` leads to, a new file included. `file` itself gets no name.
Result<> openFile(QFile& file, const QString& name, QIODevice::OpenMode mode);

// Fails when only a part of `content` was taken.
Result<> writeAll(QFile& file, const QByteArray& content);

// Up to `limit` bytes of a regular file and one more, which tells that it is larger. A pipe, which
// could keep one waiting for ever, is refused like a folder.
Result<QByteArray> readWholeFile(const QString& name, qint64 limit);

// The same of a secret: refused too when all users of the machine may read or change the file. Its
// content is nowhere else in memory.
Result<QByteArray> readSecretFile(const QString& name, qint64 limit);

// A regular file gets all of `content` or stays as it was. A device or a pipe is written to and
// never replaced.
Result<> writeWholeFile(const QString& name, const QByteArray& content);

} // namespace hx
