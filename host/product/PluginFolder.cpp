#include "host/product/PluginFolder.h"

#include <QCoreApplication>
#include <QDir>

namespace hx {

QString pluginFolder()
{
    const QDir programs(QCoreApplication::applicationDirPath());
    const QString installed = QDir::cleanPath(programs.filePath(QStringLiteral(HX_PLUGIN_FOLDER)));
    const QString built = QDir::cleanPath(programs.filePath(QStringLiteral("../lib")));
    return QDir(installed).exists() ? installed : built;
}

} // namespace hx
