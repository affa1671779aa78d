// Writes a file in one go.
#pragma once

#include <QByteArray>
#include <QString>

namespace hx {

// A regular file gets all of `content` or stays as it was. A device or a pipe is written to and
// never replaced. False, with the reason in `error`, when not all could be written.
bool writeWholeFile(const QString& path, const QByteArray& content, QString* error);

} // namespace hx
