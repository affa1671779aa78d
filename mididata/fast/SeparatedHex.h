// Bytes written as pairs of hex digits with a separator after each, eight bytes at a time.
//
// Equal to writing byte by byte: the digits of eight bytes are calculated side by side, and moved apart.
// Only on processors that move bytes so in one step.
#pragma once

#include <QtGlobal>

namespace hx {

// How many of the bytes have been written to `to`, three characters each: whole blocks, of which none holds the
// last byte.
qint64 writeSeparatedBlocks(char16_t* to, const char* from, qint64 bytes, char16_t separator);

} // namespace hx
