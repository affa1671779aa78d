// The status bytes of MIDI that decide where a message begins and ends.
#pragma once

#include <QtGlobal>

namespace hx {

constexpr quint8 firstStatus = 0x80; // data bytes lie below
constexpr quint8 firstSystem = 0xF0; // channel messages lie below
constexpr quint8 sysExStart = 0xF0;
constexpr quint8 sysExEnd = 0xF7;
constexpr quint8 firstRealTime = 0xF8; // may come anywhere, inside a SysEx message too

} // namespace hx
