// Opens the devices that --port and --in-port name by their paths: "device:/dev/snd/midiC1D0".
#pragma once

#include "apps/hxhost/session/CommandContext.h"

#include "host/bus/MidiPort.h"

#include <memory>

namespace hx::host {

// Whether one of them names a device.
bool isDevice(const ConnectionOptions& options);

// Null, with the problem in the report, when it cannot be opened. A port that only listens is given
// no output.
std::unique_ptr<MidiPort> openDevice(CommandContext& context, const ConnectionOptions& options);
std::unique_ptr<MidiPort> openDeviceInput(CommandContext& context,
                                          const ConnectionOptions& options);

} // namespace hx::host
