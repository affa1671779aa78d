// "-" as the name of a file: standard input or standard output.
#pragma once

#include "host/base/Result.h"

#include <QByteArray>
#include <QString>

namespace hx::host {

bool isStandardStream(const QString& name);

// Up to `limit` bytes and one more, which tells that there is more.
Result<QByteArray> readInput(const QString& name, qint64 limit);

// What standard output did not take is found at the end of the run.
Result<> writeOutput(const QString& name, const QByteArray& content);

} // namespace hx::host
