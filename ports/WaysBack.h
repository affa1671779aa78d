/** @file
 * How a port of this machine's MIDI systems is found again after it went away.
 */
#pragma once

#include "ports/AnsweringPort.h"
#include "ports/ReturningPort.h"

namespace hx {

using ListBackends = std::function<QList<MidiBackend>()>;

/**
 * To the port at `address`, by what it is and not by its place: it may come back under another name or
 * number. `present` are the ports that were there beside it when it was chosen. It is waited for as
 * long as its MIDI system is there. Nobody is told: `tell` is the caller's.
 */
ReturningPort::Ways waysBackTo(const PortAddress& address, const QList<MidiBackend>& present,
                               const ListBackends& list, const OpenAddress& open);

} // namespace hx
