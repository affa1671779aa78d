// "-" as the name of a file: standard input or standard output.
#pragma once

#include <QByteArray>
#include <QString>

namespace hx::host {

bool isStandardStream(const QString& name);

// Up to `limit` bytes and one more, which tells that there is more. False, with the reason in
// `error`, when they cannot be read.
bool readInput(const QString& name, qint64 limit, QByteArray* content, QString* error);

// False, with the reason in `error`, when a file cannot be written; what standard output did not
// take is found at the end of the run.
bool writeOutput(const QString& name, const QByteArray& content, QString* error);

} // namespace hx::host
