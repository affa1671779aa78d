// One port with the simulated product at its end, in this process.
#pragma once

#include "apps/hxupdate/model/PortSource.h"
#include "ports/SimulatedPort.h"

namespace hxupdate {

// The product lives as long as this does. Bytes take as long as they do on a DIN MIDI wire, so that
// an update can be watched.
class SimulatorPorts final : public PortSource {
public:
    SimulatorPorts();

    QStringList list() override;
    std::unique_ptr<hx::MidiPort> open(const QString& port, QString* error) override;

private:
    hx::SimulatedPort m_port;
};

} // namespace hxupdate
