#include "mididata/HxMidiData.h"
#include "mididata/Section.h"
#include "mididata/fast/HexTextWriter.h"

#include <algorithm>

namespace {

/** Equal to the text of toHex(), upper-cased. */
QString compactHex(const char* from, int size)
{
    QString text = size > 0 ? hx::unwrittenText(2 * qint64(size)) : QLatin1String("");
    if (!text.isEmpty())
        hx::writeBytes(hx::charactersOf(text), from, from + size);
    return text;
}

/** Equal to compactHex() with `separator` inserted between neighbouring bytes. */
QString separatedHex(const QByteArray& bytes, hx::Section section, char separator)
{
    QString text = hx::unwrittenText(3 * qint64(section.size()) - 1);
    if (text.isEmpty())
        return text;
    const char* const from = bytes.constData();
    char16_t* to = hx::writeByte(hx::charactersOf(text), from[section.begin]);
    for (int i = section.begin + 1; i < section.end; ++i) {
        *to = static_cast<unsigned char>(separator);
        to = hx::writeByte(to + 1, from[i]);
    }
    return text;
}

} // namespace

QString HxMidiData::toString(int count) const
{
    const int size = bytes.size();
    if (size == 0)
        return QString();
    return compactHex(bytes.constData(), count < 0 || count > size ? size : count);
}

QString HxMidiData::toStringFromEnd(int n) const
{
    const int size = bytes.size();
    const int shown = std::min(size, std::max(n, 0));
    return compactHex(bytes.constData() + size - shown, shown);
}

QString HxMidiData::toString(char sep, int len) const
{
    return separatedHex(bytes, hx::clippedSection(0, len, bytes.size()), sep);
}

QString HxMidiData::toString(char sep, int start, int len) const
{
    const int size = bytes.size();
    const int first = start < size ? start : 0;
    const qint64 count = std::min<qint64>(qint64(len) + first, size);
    return separatedHex(bytes, hx::clippedSection(first, count, size), sep);
}

QString HxMidiData::toStringDec() const
{
    constexpr int longestItem = 4; // three digits and a blank
    QString text = hx::unwrittenText(longestItem * qint64(bytes.size()));
    if (text.isEmpty())
        return text;
    char16_t* const begin = hx::charactersOf(text);
    char16_t* to = begin;
    for (const char byte : bytes) {
        to = hx::writeDecimal(to, static_cast<unsigned char>(byte));
        *to++ = u' ';
    }
    text.resize(static_cast<int>(to - begin) - 1); // without the last blank
    return text;
}
