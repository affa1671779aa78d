// Where the device plugin is looked for.
#pragma once

#include "apps/hxhost/session/CommandContext.h"

#include "host/product/PluginLoader.h"

#include <memory>

namespace hx::host {

// The place given with --plugin; else the folder of this installation.
QString pluginSource(const PluginOptions& options);

// The same for Qt's loader, which takes only names that the locale can write: where it cannot, a
// folder with copies of the libraries, which is there until the program ends.
QString pluginPlace(const PluginOptions& options);

// Puts this error of the plugin loader into the report.
void failWithoutPlugin(CommandContext& context, Problem problem);

// Loads it; null, with the problem in the report, when there is none.
std::unique_ptr<LoadedPlugin> loadChosenPlugin(CommandContext& context,
                                               const PluginOptions& options);

} // namespace hx::host
