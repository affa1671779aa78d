// Bytes added up 128 at a time, on processors with vectors of 32.
#pragma once

#include <QtGlobal>

namespace hx {

constexpr qint64 wideSumBlock = 128; // bytes

// Equal to adding up the bytes one by one, modulo 2^32, as ByteSum.h says. Moves `at` on until less than a block
// is left; not at all on other processors. There are two blocks or more.
quint32 sumWideBlocks(const char*& at, const char* end);

} // namespace hx
