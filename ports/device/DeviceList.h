/** @file
 * The raw MIDI devices of this machine.
 */
#pragma once

#include "ports/PortList.h"

namespace hx {

/** Where Linux has the devices of sound cards. */
inline const QString deviceFolder = QStringLiteral("/dev/snd");

/** Their files, as paths: "midiC1D0" is the first device of card 1. */
QStringList rawMidiDevices(const QString& folder = deviceFolder);

/**
 * The same as the backend "device", whose ports are files that carry bytes both ways. It is not
 * among those of `listMidiBackends`, because they are opened in another way.
 */
MidiBackend listRawMidiDevices(const QString& folder = deviceFolder);

} // namespace hx
