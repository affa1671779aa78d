// Reads and writes files in one go. Names are those of host/base/FileName.h.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace hx {

// Opens what `name` leads to, a new file included; false, with the reason in `error`, when it
// cannot be. `file` itself gets no name.
bool openFile(QFile& file, const QString& name, QIODevice::OpenMode mode, QString* error);

// Up to `limit` bytes of a regular file and one more, which tells that it is larger. A pipe, which
// could keep one waiting for ever, is refused like a folder. False, with the reason in `error`,
// when it cannot be read.
bool readWholeFile(const QString& name, qint64 limit, QByteArray* content, QString* error);

// A regular file gets all of `content` or stays as it was. A device or a pipe is written to and
// never replaced. False, with the reason in `error`, when not all could be written.
bool writeWholeFile(const QString& name, const QByteArray& content, QString* error);

} // namespace hx
