// One command over the host's bus and its reply.
#pragma once

#include "deviceinterface/Bus.h"
#include "deviceinterface/DeviceInterface.h"

#include <QString>

namespace hx {

// Sends `command` over `bus` and returns the reply that fits `responsePattern`; the bus does the
// matching and the waiting. An empty buffer means failure: no bus, or no reply within `timeoutMs`
// milliseconds. Every failure writes one debug line that begins with "IOSUPORT: ". Never retries.
BusData writeDataCommand(Bus* bus, BusData command, QString responsePattern, unsigned timeoutMs);

// The same over `device->bus`, with the device's "command.timeout.ms" as timeout (0 when its
// dictionary has no such key). A null device counts as one without a bus. `device->lastError` stays
// as it is.
BusData midiOutWithCmdAndResponceStrings(BusData const& command, QString responsePattern,
                                         DeviceInterface* device);

} // namespace hx
