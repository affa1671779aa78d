#include "mididata/HxMidiData.h"
#include "mididata/Section.h"
#include "mididata/TextLength.h"
#include "mididata/fast/FastPaths.h"
#include "mididata/fast/HexTextWriter.h"
#include "mididata/fast/SeparatedHex.h"
#include "qt/Saturated.h"

#include <algorithm>

namespace {

// Inline in each rendering: a function that gets a text from another one keeps a guard on its stack, which a
// short rendering notices.
[[gnu::always_inline]] inline QString writtenHex(const char* from, int size)
{
    QString text = hx::unwrittenText(2 * qint64(size));
    hx::writeBytes(hx::charactersOf(text), from, from + size);
    return text;
}

[[gnu::always_inline]] inline QString writtenHex(const char* from, int size, char separator)
{
    QString text = hx::unwrittenText(3 * qint64(size) - 1);
    char16_t* const to = hx::charactersOf(text);
    const auto between = static_cast<unsigned char>(separator);
    const qint64 written = hx::writeSeparatedBlocks(to, from, size, between);
    hx::writeSeparated(to + 3 * written, from + written, from + size, between);
    return text;
}

QString writtenDecimal(const QByteArray& bytes)
{
    constexpr int longestItem = 4; // three digits and a blank
    QString text = hx::unwrittenText(longestItem * qint64(bytes.size()));
    char16_t* const begin = hx::charactersOf(text);
    char16_t* to = begin;
    for (const char byte : bytes) {
        to = hx::writeDecimal(to, static_cast<unsigned char>(byte));
        *to++ = u' ';
    }
    text.resize(static_cast<int>(to - begin));
    return text;
}

QString plainHex(const char* from, int size)
{
    const QByteArray digits = QByteArray::fromRawData(from, size).toHex();
    return QString::fromLatin1(digits.constData(), digits.size()).toUpper();
}

QString plainHex(const char* from, int size, char separator)
{
    QString text = plainHex(from, 1);
    for (int i = 1; i < size; ++i)
        text += QLatin1Char(separator) + plainHex(from + i, 1);
    return text;
}

QString plainDecimal(const QByteArray& bytes)
{
    QString text;
    for (const char byte : bytes)
        text += QString::number(static_cast<unsigned char>(byte)) + QLatin1Char(' ');
    return text;
}

// Null when it is longer than a text can be, empty but not null for no bytes.
[[gnu::always_inline]] inline QString compactHex(const char* from, int size)
{
    if (!hx::fitsText(2 * qint64(size)))
        return QString();
    return hx::fastPaths ? writtenHex(from, size) : plainHex(from, size);
}

[[gnu::always_inline]] inline QString separatedHex(const QByteArray& bytes, hx::Section section,
                                                   char separator)
{
    const int size = section.size();
    if (size == 0 || !hx::fitsText(3 * qint64(size)))
        return QString();
    const char* const from = bytes.constData() + section.begin;
    return hx::fastPaths ? writtenHex(from, size, separator) : plainHex(from, size, separator);
}

} // namespace

QString HxMidiData::toString(int count) const
{
    const int size = hx::saturated(bytes.size());
    if (size == 0)
        return QString();
    return compactHex(bytes.constData(), count < 0 || count > size ? size : count);
}

QString HxMidiData::toStringFromEnd(int n) const
{
    const int size = hx::saturated(bytes.size());
    const int shown = std::min(size, std::max(n, 0));
    return compactHex(bytes.constData() + size - shown, shown);
}

QString HxMidiData::toString(char sep, int len) const
{
    return separatedHex(bytes, hx::clippedSection(0, len, hx::saturated(bytes.size())), sep);
}

QString HxMidiData::toString(char sep, int start, int len) const
{
    const int size = hx::saturated(bytes.size());
    const int first = start < size ? start : 0;
    const qint64 count = std::min<qint64>(qint64(len) + first, size);
    return separatedHex(bytes, hx::clippedSection(first, count, size), sep);
}

QString HxMidiData::toStringDec() const
{
    constexpr int longestItem = 4;
    if (bytes.isEmpty() || !hx::fitsText(longestItem * qint64(bytes.size())))
        return QString();
    QString text = hx::fastPaths ? writtenDecimal(bytes) : plainDecimal(bytes);
    text.chop(1); // the last blank
    return text;
}
