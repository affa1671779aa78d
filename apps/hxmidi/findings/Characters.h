// Kinds of characters in the texts that a user writes.
#pragma once

namespace hx::midi {

inline bool isPrintable(char c)
{
    return c >= ' ' && c <= '~';
}

inline bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

} // namespace hx::midi
