#include "mididata/fast/DumpTableWriter.h"

#include "mididata/DumpTable.h"
#include "mididata/fast/HexTextWriter.h"

#include <algorithm>

namespace hx {

namespace {

// Constants, or their lengths would be counted for each row.
constexpr std::u16string_view labelEnd = u" | ";
constexpr std::u16string_view gap = u" - ";

constexpr int mostLabelDigits = 8;

// Three digits or more: the last two are a byte, at least one is before them.
char16_t* writeLabel(char16_t* to, int offset)
{
    int shift = 8;
    while (shift < 4 * (mostLabelDigits - 1) && offset >> (shift + 4) != 0)
        shift += 4;
    for (; shift >= 8; shift -= 4)
        *to++ = u"0123456789ABCDEF"[(offset >> shift) & 0xF];
    to = writeByte(to, static_cast<char>(offset & 0xFF));
    return writeText(to, labelEnd);
}

// Inline, so that whole rows are written without counting.
inline char16_t* writeRuledRow(char16_t* to, const char* from, const char* end)
{
    to = writeText(writeSeparated(to, from, from + gapColumn, u' '), gap);
    return writeSeparated(to, from + gapColumn, end, u' ');
}

char16_t* writeLabelBelow(char16_t* to, int offset)
{
    *to = u'\n';
    return writeLabel(to + 1, offset);
}

char16_t* writeRow(char16_t* to, const char* from, const char* end, int columns)
{
    if (columns != ruledColumns || end - from <= gapColumn)
        return writeSeparated(to, from, end, u' ');
    return end - from == ruledColumns ? writeRuledRow(to, from, from + ruledColumns)
                                      : writeRuledRow(to, from, end);
}

char16_t* writeRows(char16_t* to, const char* from, int size, int columns)
{
    to = writeLabel(to, 0);
    for (int begin = 0; begin < size;) {
        const int end = begin + std::min(columns, size - begin);
        to = writeRow(to, from + begin, from + end, columns);
        begin = end;
        if (begin < size)
            to = writeLabelBelow(to, begin);
    }
    return to;
}

// Writes what follows the last byte when there are several rows.
char16_t* writeEnding(char16_t* to, int size, int columns)
{
    if (size <= columns)
        return to;
    if (size % columns == 0)
        return writeLabelBelow(to, size);
    *to = u' ';
    return to + 1;
}

} // namespace

QString writtenTable(const char* bytes, int size, int columns)
{
    QString text = unwrittenText(greatestTableLength(size, columns));
    if (text.isEmpty())
        return text;
    char16_t* const begin = charactersOf(text);
    char16_t* to = columns == ruledColumns ? writeText(begin, tableHeading) : begin;
    to = writeRows(to, bytes, size, columns);
    to = writeEnding(to, size, columns);
    text.resize(static_cast<int>(to - begin));
    return text;
}

} // namespace hx
