#pragma once

#include <string_view>

namespace hx {

/** A token read as a hex number. */
struct HexNumber {
    unsigned int value;
    bool ok;
};

/**
 * Reads the whole token by the rules of QString::toInt() in base 16: an optional sign and 0x
 * prefix, white space at either end; the value must fit a signed 32-bit integer.
 */
HexNumber readHexNumber(std::string_view token);

} // namespace hx
