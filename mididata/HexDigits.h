#pragma once

#include <array>
#include <cstddef>

namespace hx {

/** A byte as two upper-case hex digits in UTF-16. */
struct HexPair {
    char16_t high;
    char16_t low;
};

constexpr std::array<HexPair, 256> makeHexPairs()
{
    constexpr char16_t digits[] = u"0123456789ABCDEF";
    std::array<HexPair, 256> pairs{};
    for (std::size_t byte = 0; byte < pairs.size(); ++byte)
        pairs[byte] = {digits[byte / 16], digits[byte % 16]};
    return pairs;
}

/** Every byte's two digits. */
inline constexpr std::array<HexPair, 256> hexPairs = makeHexPairs();

constexpr std::array<signed char, 256> makeHexValues()
{
    std::array<signed char, 256> values{};
    for (signed char& value : values)
        value = -1;
    for (std::size_t digit = 0; digit < 10; ++digit)
        values['0' + digit] = static_cast<signed char>(digit);
    for (std::size_t digit = 10; digit < 16; ++digit) {
        values['A' + digit - 10] = static_cast<signed char>(digit);
        values['a' + digit - 10] = static_cast<signed char>(digit);
    }
    return values;
}

/** The value of each Latin-1 character as a hex digit, -1 for what is none. */
inline constexpr std::array<signed char, 256> hexValues = makeHexValues();

/** The value of a character as a hex digit; -1 when it is none. */
constexpr int hexValue(char c)
{
    return hexValues[static_cast<unsigned char>(c)];
}

/** The byte that two characters denote as hex digits; negative when one of them is none. */
constexpr int hexByte(char high, char low)
{
    return hexValue(high) * 16 | hexValue(low);
}

} // namespace hx
