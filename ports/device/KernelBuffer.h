// What waits in the kernel's buffers of a device, in the words of each system.
#pragma once

#include <QtGlobal>

namespace hx {

// Room that the kernel has for output to a raw MIDI device; 0: it is another device.
qint64 rawMidiRoom(int descriptor);

// Bytes written to a terminal that have not left it; 0 where the system does not tell.
qint64 terminalBytesWaiting(int descriptor);

// Bytes in a FIFO that nobody has read; 0 where the system does not tell.
qint64 fifoBytesWaiting(int descriptor);

// Keeps other programs from opening a terminal, and lets them again. A pseudo terminal is left
// alone: its mark would outlive a program that is killed.
void reserveTerminal(int descriptor);
void releaseTerminal(int descriptor);

} // namespace hx
