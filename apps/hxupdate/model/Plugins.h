// The device plugins that the window works with.
#pragma once

#include "host/signature/TrustedKeys.h"

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

    // That images for this plugin must be signed with, read when the plugin was loaded.
    const hx::TrustedKeys& keys(int number) const { return m_keys.at(size_t(number)); }

    // Why there is none.
    QString error() const { return m_error; }

private:
    std::vector<std::unique_ptr<hx::LoadedPlugin>> m_plugins;
    std::vector<hx::TrustedKeys> m_keys; // of each
    QString m_error;
};

} // namespace hxupdate
