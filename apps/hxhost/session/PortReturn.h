// Keeps a port through a restart of its product: it is found again by what it is, not by its place.
#pragma once

#include "apps/hxhost/session/CommandContext.h"

#include "ports/PortList.h"
#include "ports/ReturningPort.h"
#include "ports/RtMidiPort.h"

#include <memory>

namespace hx::host {

// `present` were listed before the port was opened. They cannot be listed while it is: when JACK's
// server has gone away, its library then frees the clients of the open port.
std::unique_ptr<MidiPort> keepPort(CommandContext& context, const ConnectionOptions& options,
                                   std::unique_ptr<MidiPort> port, const PortAddress& address,
                                   const QList<MidiBackend>& present);

// A device is kept when its USB device is known; of any other the name proves nothing.
std::unique_ptr<MidiPort> keepDevice(CommandContext& context, const ConnectionOptions& options,
                                     std::unique_ptr<MidiPort> port);

} // namespace hx::host
