#include "mididata/HxMidiData.h"
#include "mididata/Section.h"
#include "mididata/fast/EqualBytes.h"
#include "mididata/fast/FastPaths.h"
#include "qt/Saturated.h"

#include <algorithm>

namespace {

// The first index at or after `from` where the arrays differ, or `end`.
int nextDifference(const QByteArray& a, const QByteArray& b, int from, int end)
{
    if (hx::fastPaths)
        from = hx::skipEqualBlocks(a.constData(), b.constData(), from, end);
    while (from < end && a.at(from) == b.at(from))
        ++from;
    return from;
}

QString decimal(char byte)
{
    return QString::number(static_cast<unsigned char>(byte));
}

QString differenceLine(int index, char mine, char others)
{
    return QStringLiteral("[%1] %2!=%3")
        .arg(QString::number(index), decimal(mine), decimal(others));
}

// The range that diff() compares, with `size` the smaller of the two sizes.
hx::Section listedRange(int count, int offset, int size)
{
    if (count <= 0 || count > size)
        return {0, size};
    if (offset <= 0)
        return {0, count};
    if (qint64(offset) + count <= size)
        return {offset, offset + count};
    return {0, size};
}

// The range that diffToMap() compares, with `size` the smaller of the two sizes.
hx::Section mappedRange(int offset, int count, int size)
{
    qint64 end = count == -1 ? size : count;
    if (count >= 1 && count <= size && offset > 0 && qint64(offset) + count <= size)
        end = qint64(offset) + count;
    const int begin = std::max(offset, 0);
    const int stop = static_cast<int>(std::min<qint64>(end, size));
    return begin < stop ? hx::Section{begin, stop} : hx::Section{0, 0};
}

} // namespace

QStringList HxMidiData::diff(const HxMidiData& other, int count, int offset) const
{
    QStringList lines;
    const int mySize = hx::saturated(bytes.size());
    const int otherSize = hx::saturated(other.bytes.size());
    if (count > 0 && mySize != otherSize)
        lines += QStringLiteral("Size Mismatch: %1 != %2").arg(mySize).arg(otherSize);
    const hx::Section range = listedRange(count, offset, std::min(mySize, otherSize));
    for (int i = range.begin; (i = nextDifference(bytes, other.bytes, i, range.end)) < range.end;
         ++i)
        lines += differenceLine(i, bytes.at(i), other.bytes.at(i));
    return lines;
}

QStringList HxMidiData::diff(const char* data, int len) const
{
    if (data == nullptr)
        return QStringList(QStringLiteral("Invalid Arg"));
    return diff(HxMidiData(QByteArray::fromRawData(data, std::max(len, 0))), -1, -1);
}

QMap<unsigned int, unsigned char> HxMidiData::diffToMap(const HxMidiData& other,
                                                        const std::pair<int, int>& range) const
{
    QMap<unsigned int, unsigned char> map;
    const int mySize = hx::saturated(bytes.size());
    const int otherSize = hx::saturated(other.bytes.size());
    for (int i = 0; otherSize == 0 && i < mySize; ++i)
        map.insert(static_cast<unsigned int>(i), 0);
    const hx::Section compared =
        mappedRange(range.first, range.second, std::min(mySize, otherSize));
    for (int i = compared.begin;
         (i = nextDifference(bytes, other.bytes, i, compared.end)) < compared.end; ++i)
        map.insert(static_cast<unsigned int>(i), static_cast<unsigned char>(other.bytes.at(i)));
    return map;
}
