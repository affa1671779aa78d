#include "mididata/fast/DumpTableWriter.h"

#include "mididata/DumpTable.h"
#include "mididata/fast/HexTextWriter.h"

#include <algorithm>

namespace hx {

namespace {

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
    return writeText(to, labelEnd);
}

char16_t* writeRow(char16_t* to, const char* from, const char* end, int columns)
{
    if (columns != ruledColumns || end - from <= gapColumn)
        return writeSeparated(to, from, end, u' ');
    to = writeSeparated(to, from, from + gapColumn, u' ');
    to = writeText(to, u" - ");
    return writeSeparated(to, from + gapColumn, end, u' ');
}

char16_t* writeRows(char16_t* to, const char* from, int size, int columns)
{
    to = writeLabel(to, 0);
    for (int begin = 0; begin < size;) {
        const int end = begin + std::min(columns, size - begin);
        to = writeRow(to, from + begin, from + end, columns);
        begin = end;
        if (begin < size)
            to = writeLabel(writeText(to, u"\n"), begin);
    }
    return to;
}

// Writes what follows the last byte when there are several rows.
char16_t* writeEnding(char16_t* to, int size, int columns)
{
    if (size <= columns)
        return to;
    return size % columns == 0 ? writeLabel(writeText(to, u"\n"), size) : writeText(to, u" ");
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
