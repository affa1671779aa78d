// Where the device plugin is looked for.
#pragma once

#include "apps/hxhost/commands/CommandLine.h"

#include "host/product/PluginLoader.h"

#include <memory>

namespace hx {

// The place given with --plugin; else the folder of this installation.
QString pluginPlace(const PluginOptions& options);

// Puts this error of the plugin loader into the report.
void failWithoutPlugin(CommandContext& context, const QString& loadError);

// Loads it; null, with the problem in the report, when there is none.
std::unique_ptr<LoadedPlugin> loadChosenPlugin(CommandContext& context,
                                               const PluginOptions& options);

} // namespace hx
