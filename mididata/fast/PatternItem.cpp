#include "mididata/fast/PatternItem.h"

namespace hx {

namespace {

constexpr PatternItem outsideGrammar = {nullptr, noDigit, 0, false};

// A class, from the character after its bracket on. Holds hex digits, one at least.
PatternItem readClass(const char* at)
{
    DigitMask mask = noDigit;
    for (at = skipBlanks(at); *at != ']'; at = skipBlanks(at + 1)) {
        if (hexValue(*at) < 0)
            return outsideGrammar;
        mask |= plainMask(*at);
    }
    return mask != noDigit ? PatternItem{at + 1, mask, 1, false} : outsideGrammar;
}

constexpr bool isX(char c)
{
    return c == 'X' || c == 'x';
}

PatternItem readWithoutStar(const char* at)
{
    const DigitMask mask = plainMask(*at);
    if (mask != notPlain)
        return {at + 1, mask, 1, false};
    if (*at == '[')
        return readClass(at + 1);
    if (!isX(*at))
        return outsideGrammar;
    const char* const second = skipBlanks(at + 1);
    return isX(*second) ? PatternItem{second + 1, anyDigit, 2, false}
                        : PatternItem{at + 1, noDigit, 1, false};
}

} // namespace

PatternItem readItem(const char* at)
{
    PatternItem item = readWithoutStar(at);
    if (item.next == nullptr)
        return item;
    item.next = skipBlanks(item.next);
    if (*item.next != '*')
        return item;
    if (item.mask != anyDigit)
        return outsideGrammar;
    return {skipBlanks(item.next + 1), anyDigit, item.width - 1, true};
}

} // namespace hx
