// The device plugins that the window works with.
#pragma once

#include "host/product/PluginLoader.h"

#include <vector>

namespace hxupdate {

class Plugins {
public:
    // Loads the plugin in the file `place`, or all that can be loaded of those in the folder.
    void load(const QString& place);

    bool isEmpty() const { return m_plugins.empty(); }
    int count() const { return int(m_plugins.size()); }
    hx::LoadedPlugin& plugin(int number) const { return *m_plugins.at(size_t(number)); }
    DeviceInterface& device(int number) const { return plugin(number).device(); }

    // Why there is none.
    QString error() const { return m_error; }

private:
    std::vector<std::unique_ptr<hx::LoadedPlugin>> m_plugins;
    QString m_error;
};

} // namespace hxupdate
