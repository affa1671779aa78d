// One port with the plugin's product, simulated, at its end, in this process.
#pragma once

#include "apps/hxupdate/model/PortSource.h"
#include "ports/SimulatedPort.h"

namespace hxupdate {

// The product is that of the first plugin in `pluginPlace`; without one there is no port. It lives as
// long as this does. Bytes take as long as they do on a DIN MIDI wire, by the clock `real`, so that an
// update can be watched.
class SimulatorPorts final : public PortSource {
public:
    explicit SimulatorPorts(const QString& pluginPlace,
                            std::unique_ptr<hx::Clock> real = std::make_unique<hx::SteadyClock>());

    QStringList list() override;
    hx::Result<std::unique_ptr<hx::MidiPort>> open(const QString& port, DeviceInterface& device,
                                                   const PortMoved& moved) override;

private:
    std::unique_ptr<hx::Clock> m_real;
    std::unique_ptr<hx::SimulatedPort> m_port;
};

} // namespace hxupdate
