#include "mididata/HxMidiData.h"
#include "mididata/Section.h"
#include "mididata/fast/HexTextWriter.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr int ruledColumns = 16; // the only number of columns with a heading and a gap
constexpr int gapColumn = 8;
constexpr std::u16string_view heading = u"      00 01 02 03 04 05 06 07   08 09 0A 0B 0C 0D 0E 0F\n"
                                        u"\t ------------------------ - -----------------------\n";
constexpr std::u16string_view labelEnd = u" | ";

int labelDigits(int offset)
{
    int digits = 3;
    while (digits < 8 && offset >> (4 * digits) != 0)
        ++digits;
    return digits;
}

char16_t* writeLabel(char16_t* to, int offset)
{
    for (int shift = 4 * (labelDigits(offset) - 1); shift >= 0; shift -= 4)
        *to++ = u"0123456789ABCDEF"[(offset >> shift) & 0xF];
    return hx::writeText(to, labelEnd);
}

/** Writes at least one byte, separated by blanks. */
char16_t* writeSpaced(char16_t* to, const char* from, const char* end)
{
    to = hx::writeByte(to, *from);
    while (++from != end) {
        *to = u' ';
        to = hx::writeByte(to + 1, *from);
    }
    return to;
}

char16_t* writeRow(char16_t* to, const char* from, const char* end, int columns)
{
    if (columns != ruledColumns || end - from <= gapColumn)
        return writeSpaced(to, from, end);
    to = writeSpaced(to, from, from + gapColumn);
    to = hx::writeText(to, u" - ");
    return writeSpaced(to, from + gapColumn, end);
}

char16_t* writeRows(char16_t* to, const char* from, int size, int columns)
{
    to = writeLabel(to, 0);
    for (int begin = 0; begin < size;) {
        const int end = begin + std::min(columns, size - begin);
        to = writeRow(to, from + begin, from + end, columns);
        begin = end;
        if (begin < size)
            to = writeLabel(hx::writeText(to, u"\n"), begin);
    }
    return to;
}

/** Writes what follows the last byte when there are several rows. */
char16_t* writeEnding(char16_t* to, int size, int columns)
{
    if (size <= columns)
        return to;
    return size % columns == 0 ? writeLabel(hx::writeText(to, u"\n"), size)
                               : hx::writeText(to, u" ");
}

/** No table of `size` bytes is longer. */
qint64 greatestLength(int size, int columns)
{
    constexpr qint64 newlineAndGap = 1 + 2;
    const qint64 labels = qint64(size) / columns + 2;
    const qint64 labelLength = labelDigits(size) + static_cast<qint64>(labelEnd.size());
    return static_cast<qint64>(heading.size()) + labels * (labelLength + newlineAndGap) +
           3 * qint64(size);
}

} // namespace

/*
 * Equal to spacing out the compact hex text in place, byte by byte. There the end of the text is
 * kept in a counter that runs one ahead for every row label, and so, once there are several rows,
 * what separates bytes is put behind the last one as well.
 */
QString HxMidiData::toStringTable(int len, int columns) const
{
    if (columns < 1)
        return QString();
    const int size = hx::clippedSection(0, len, bytes.size()).size();
    QString text = hx::unwrittenText(greatestLength(size, columns));
    if (text.isEmpty())
        return text;
    char16_t* const begin = hx::charactersOf(text);
    char16_t* to = columns == ruledColumns ? hx::writeText(begin, heading) : begin;
    to = writeRows(to, bytes.constData(), size, columns);
    to = writeEnding(to, size, columns);
    text.resize(static_cast<int>(to - begin));
    return text;
}
