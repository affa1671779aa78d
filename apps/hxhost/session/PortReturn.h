// Keeps a port through a restart of its product: it is found again by what it is, not by its place.
#pragma once

#include "apps/hxhost/session/CommandContext.h"

#include "ports/ReturningPort.h"
#include "ports/RtMidiPort.h"

#include <memory>

namespace hx::host {

std::unique_ptr<MidiPort> keepPort(CommandContext& context, const ConnectionOptions& options,
                                   std::unique_ptr<MidiPort> port, const PortAddress& address);

// A device is kept when its USB device is known; of any other the name proves nothing.
std::unique_ptr<MidiPort> keepDevice(CommandContext& context, const ConnectionOptions& options,
                                     std::unique_ptr<MidiPort> port);

} // namespace hx::host
