// The MIDI ports of this machine.
#pragma once

#include "apps/hxupdate/model/PortSource.h"

#include "ports/WaysBack.h"

namespace hxupdate {

// What the machine's ports are reached by.
struct MidiSystem {
    hx::ListBackends list;
    hx::OpenAddress open;
    std::shared_ptr<hx::Clock> clock; // that of its ports
};

MidiSystem midiSystemOfMachine();

// Where several inputs may belong to an output, they are asked which of them answers.
class MachinePorts final : public PortSource {
public:
    explicit MachinePorts(MidiSystem system = midiSystemOfMachine());

    QStringList list() override;
    hx::Result<std::unique_ptr<hx::MidiPort>> open(const QString& port, DeviceInterface& device,
                                                   const PortMoved& moved) override;

private:
    MidiSystem m_system;
};

} // namespace hxupdate
