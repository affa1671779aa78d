#include "apps/hxhost/report/StandardStreams.h"

#include "host/base/WholeFile.h"

#include <cstdio>

namespace hx::host {

bool isStandardStream(const QString& name)
{
    return name == QLatin1String("-");
}

Result<QByteArray> readInput(const QString& name, qint64 limit)
{
    if (!isStandardStream(name))
        return readWholeFile(name, limit);
    QFile input;
    QByteArray content;
    if (input.open(stdin, QIODevice::ReadOnly))
        content = input.read(limit + 1);
    if (input.error() != QFileDevice::NoError)
        return fileProblem(input.errorString());
    return content;
}

Result<> writeOutput(const QString& name, const QByteArray& content)
{
    if (!isStandardStream(name))
        return writeWholeFile(name, content);
    fwrite(content.constData(), 1, size_t(content.size()), stdout);
    return {};
}

} // namespace hx::host
