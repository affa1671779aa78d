// A loaded plugin, connected to a product.
#pragma once

#include "apps/hxhost/session/InterruptFlag.h"
#include "apps/hxhost/session/PluginPlace.h"

#include "host/bus/PortBus.h"
#include "host/product/MessageNames.h"

#include <memory>

namespace hx::host {

class Session {
public:
    explicit Session(CommandContext& context);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Each returns false, with the problem in the report, when it cannot be done. A plugin is
    // needed before anything is connected.
    bool loadPlugin(const PluginOptions& options);
    bool connect(const ConnectionOptions& options);

    // Both.
    bool open(const ConnectionOptions& options);

    // Both, for a session that only listens.
    bool listenOn(const ConnectionOptions& options);

    const LoadedPlugin& plugin() const { return *m_plugin; }
    DeviceInterface& device() const { return m_plugin->device(); }
    PortBus& bus() const { return *m_bus; }
    MidiPort& port() const { return *m_port; }

    // Whether the product on the port is simulated or replayed, not a real one.
    bool isMadeUp() const { return m_isMadeUp; }

    // Set by Ctrl-C, a termination signal or the closing of the terminal, from the moment a port is
    // open: waits on the bus then end.
    const std::atomic<bool>& interrupted() const { return *m_interrupt->flag(); }

    const MessageNames& names() const { return *m_names; }
    const ProductDescription& product() const { return m_product; }

private:
    bool use(std::unique_ptr<MidiPort> port, const ConnectionOptions& options);

    CommandContext& m_context;
    std::unique_ptr<LoadedPlugin> m_plugin;
    ProductDescription m_product;
    std::unique_ptr<MessageNames> m_names;
    std::unique_ptr<MidiPort> m_port;
    std::unique_ptr<PortBus> m_bus;
    std::unique_ptr<InterruptFlag> m_interrupt;
    bool m_isMadeUp = false;
};

} // namespace hx::host
