#include "mididata/fast/PatternItem.h"

namespace hx {

namespace {

/** Reads a class behind its opening bracket. Null when there is anything but hex digits in it. */
const char* readClass(const char* at, DigitMask& mask)
{
    mask = noDigit;
    for (at = skipBlanks(at); *at != ']'; at = skipBlanks(at + 1)) {
        if (hexValues[static_cast<unsigned char>(*at)] < 0)
            return nullptr;
        mask |= plainMask(*at);
    }
    return mask != noDigit ? at + 1 : nullptr;
}

} // namespace

const char* readSpecialItem(const char* at, DigitMask*& next)
{
    if (*at == ' ')
        return at + 1;
    if (*at == '[')
        return readClass(at + 1, *next++);
    if (!isX(*at))
        return nullptr;
    const char* const second = skipBlanks(at + 1);
    if (!isX(*second)) {
        *next++ = noDigit;
        return at + 1;
    }
    *next++ = anyDigit;
    *next++ = anyDigit;
    return second + 1;
}

} // namespace hx
