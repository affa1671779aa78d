#pragma once

#include <QByteArray>

#include <string>

namespace hxbench {

/** Bytes of every value in a fixed, mixed order. */
QByteArray mixedBytes(int size);

/** `size` bytes of System Exclusive messages of `length` bytes each, as many as are whole. */
QByteArray messageStream(int size, int length = 48);

/** "4096", but "4K" and "1M" where the number is round. */
std::string sizeName(int size);

} // namespace hxbench
