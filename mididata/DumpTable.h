// What a dump table consists of.
#pragma once

#include <QtGlobal>

#include <string_view>

namespace hx {

constexpr int ruledColumns = 16; // the only number of columns with a heading and a gap
constexpr int gapColumn = 8;     // the gap is before this one
constexpr std::u16string_view tableHeading =
    u"      00 01 02 03 04 05 06 07   08 09 0A 0B 0C 0D 0E 0F\n"
    u"\t ------------------------ - -----------------------\n";

// No table of `size` bytes is longer.
constexpr qint64 greatestTableLength(int size, int columns)
{
    constexpr qint64 labelAndNewline = 8 + 3 + 1;
    constexpr qint64 gap = 2;
    const qint64 rows = qint64(size) / columns + 2;
    return qint64(tableHeading.size()) + rows * (labelAndNewline + gap) + 3 * qint64(size);
}

} // namespace hx
