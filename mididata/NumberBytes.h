// The bytes of a number, as hex text, builder formats and the buffer's own operations give them.
#pragma once

#include <QByteArray>

namespace hx {

constexpr unsigned int numberWithoutBytes = 0xFFFFFFFFu;

// One byte, or two, three or four with the most significant first. Of two the first is always 00.
// Empty for numberWithoutBytes.
QByteArray numberBytes(unsigned int value);

void logNumberWithoutBytes();

} // namespace hx
