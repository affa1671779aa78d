// Lengths of Qt's containers are `int` in Qt 5 and `qsizetype` in Qt 6.
#pragma once

#include <QtGlobal>

#include <limits>

namespace hx {

// A length or position as the `int` that interfaces have for it; one that does not fit becomes the
// nearest that does.
constexpr int saturated(qsizetype length)
{
    constexpr qsizetype least = std::numeric_limits<int>::min();
    constexpr qsizetype greatest = std::numeric_limits<int>::max();
    return static_cast<int>(length < least ? least : length > greatest ? greatest : length);
}

} // namespace hx
