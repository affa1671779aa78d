// How long a text can be.
#pragma once

#include <QtGlobal>

#include <limits>

namespace hx {

// What a QString can hold, with room for its header.
constexpr qint64 longestText = (std::numeric_limits<int>::max() - 64) / 2;

constexpr bool fitsText(qint64 length)
{
    return length <= longestText;
}

} // namespace hx
