#include "apps/hxhost/session/PluginPlace.h"

#include "host/base/FileName.h"
#include "host/product/PluginFolder.h"

namespace hx {

QString pluginPlace(const PluginOptions& options)
{
    if (!options.plugin.empty())
        return fileNameText(options.plugin);
    return pluginFolder();
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
