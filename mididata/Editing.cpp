#include "mididata/HxMidiData.h"

#include <algorithm>
#include <functional>
#include <limits>

namespace {

/** A private copy, which stays what it is while the buffer that it was part of changes. */
QByteArray deepCopy(const QByteArray& array)
{
    return QByteArray(array.constData(), array.size());
}

/** Whether `part` looks at memory of `whole` that it does not keep alive. */
bool looksInto(const QByteArray& whole, const QByteArray& part)
{
    const std::less<const char*> before;
    const char* const begin = whole.constData();
    return !part.isSharedWith(whole) && !before(part.constData(), begin) &&
           before(part.constData(), begin + whole.size());
}

// Whether an array can be so long in Qt 5, which allocates header, bytes and closing zero as one int.
bool fitsArray(qint64 size)
{
    constexpr qint64 header = 24;
    return size + header + 1 <= std::numeric_limits<int>::max();
}

/** How long `size` bytes are after `len` of them at `pos` have become `added` ones. */
qint64 sizeAfterReplacing(qint64 size, int pos, int len, qint64 added)
{
    const qint64 removed = std::max<qint64>(0, std::min<qint64>(len, size - pos));
    return std::max<qint64>(pos, size - removed) + added;
}

} // namespace

HxMidiData& HxMidiData::append(const HxMidiData& other)
{
    if (!fitsArray(qint64(bytes.size()) + other.bytes.size()))
        return *this;
    if (looksInto(bytes, other.bytes))
        bytes.append(deepCopy(other.bytes));
    else
        bytes.append(other.bytes);
    return *this;
}

void HxMidiData::chomp(int n)
{
    bytes.chop(n);
}

QByteArray HxMidiData::replace(int pos, int len, const QByteArray& with)
{
    if (pos < 0 || !fitsArray(sizeAfterReplacing(bytes.size(), pos, len, with.size())))
        return bytes;
    return bytes.replace(pos, len, deepCopy(with));
}
