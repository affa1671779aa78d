#include "host/base/WholeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace hx {

namespace {

bool writeTo(QFileDevice& file, const QByteArray& content)
{
    return file.write(content) == content.size() && file.flush();
}

// A system that takes a part of the content has met no error yet.
QString reason(const QFileDevice& file)
{
    return file.error() == QFileDevice::NoError
               ? QStringLiteral("there is no room for all of it; free some")
               : file.errorString();
}

// QSaveFile would put a regular file in the place of a device.
bool isSpecial(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() && !info.isFile() && !info.isDir();
}

bool writeSpecial(const QString& path, const QByteArray& content, QString* error)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly) && writeTo(file, content))
        return true;
    *error = reason(file);
    return false;
}

} // namespace

bool writeWholeFile(const QString& path, const QByteArray& content, QString* error)
{
    if (isSpecial(path))
        return writeSpecial(path, content, error);
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && writeTo(file, content) && file.commit())
        return true;
    *error = reason(file);
    return false;
}

} // namespace hx
