#include "apps/hxhost/report/StandardStreams.h"

#include "host/base/WholeFile.h"

#include <cstdio>

namespace hx::host {

bool isStandardStream(const QString& name)
{
    return name == QLatin1String("-");
}

bool readInput(const QString& name, qint64 limit, QByteArray* content, QString* error)
{
    if (!isStandardStream(name))
        return readWholeFile(name, limit, content, error);
    QFile input;
    if (input.open(stdin, QIODevice::ReadOnly))
        *content = input.read(limit + 1);
    if (input.error() == QFileDevice::NoError)
        return true;
    *error = input.errorString();
    return false;
}

bool writeOutput(const QString& name, const QByteArray& content, QString* error)
{
    if (!isStandardStream(name))
        return writeWholeFile(name, content, error);
    fwrite(content.constData(), 1, size_t(content.size()), stdout);
    return true;
}

} // namespace hx::host
