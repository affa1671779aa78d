#include "apps/hxhost/session/PluginPlace.h"

#include "host/base/FileName.h"

#include <QCoreApplication>
#include <QDir>

namespace hx {

QString pluginPlace(const PluginOptions& options)
{
    if (!options.plugin.empty())
        return fileNameText(options.plugin);
    const QDir programs(QCoreApplication::applicationDirPath());
    const QString installed =
        QDir::cleanPath(programs.filePath(QStringLiteral(HXHOST_PLUGIN_FOLDER)));
    const QString built = QDir::cleanPath(programs.filePath(QStringLiteral("../lib")));
    return QDir(installed).exists() ? installed : built;
}

void failWithoutPlugin(CommandContext& context, const QString& loadError)
{
    context.fail(ExitCode::NoPlugin, loadError,
                 QStringLiteral("a device plugin made for this host"),
                 QStringLiteral("give its file or folder with --plugin"));
}

std::unique_ptr<LoadedPlugin> loadChosenPlugin(CommandContext& context,
                                               const PluginOptions& options)
{
    PluginLoadResult result = loadPlugin(pluginPlace(options));
    if (!result.ok())
        failWithoutPlugin(context, result.error);
    return std::move(result.plugin);
}

} // namespace hx
