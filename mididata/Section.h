#pragma once

#include <QtGlobal>

#include <algorithm>

namespace hx {

/** A run of bytes that lies inside a buffer. */
struct Section {
    int begin;
    int end;

    int size() const { return end - begin; }
};

/**
 * The section that QByteArray::mid(pos, len) takes of a buffer of `size` bytes: a negative `len`
 * means to the end, a part outside the buffer is left out. Takes sums that do not fit an int.
 */
inline Section clippedSection(qint64 pos, qint64 len, int size)
{
    const qint64 end = len < 0 ? size : std::min<qint64>(pos + len, size);
    const qint64 begin = std::max<qint64>(pos, 0);
    return begin < end ? Section{static_cast<int>(begin), static_cast<int>(end)} : Section{0, 0};
}

} // namespace hx
