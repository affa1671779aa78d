// Opens whatever --port names: a MIDI port, a device, the simulated product, a
// recorded one.
#pragma once

#include "apps/hxhost/session/CommandContext.h"

#include "deviceinterface/DeviceInterface.h"
#include "host/bus/MidiPort.h"

#include <memory>

namespace hx::host {

// Whether --port names the simulated product, whose faults can be chosen.
bool isSimulatedPort(const QString& name);

// Whether --port names something other than a port of this machine: the simulated product or a
// replayed trace.
bool isMadeUpPort(const QString& name);

// Whether it names a recorded session that is played back.
bool isReplayedPort(const QString& name);

// Null, with the problem in the report, when it cannot be opened.
std::unique_ptr<MidiPort> openPort(CommandContext& context, const ConnectionOptions& options,
                                   DeviceInterface& device);

// The same for a port that is only listened to. Of a recorded session it gives what arrived.
std::unique_ptr<MidiPort> openInput(CommandContext& context, const ConnectionOptions& options,
                                    DeviceInterface& device);

} // namespace hx::host
