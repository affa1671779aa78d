#include "host/base/PrintableText.h"

#include <QStringList>

namespace hx {

namespace {

QString escape(const char* form, uint code)
{
    return QString::asprintf(form, code);
}

// Embedding, override and isolation of a direction of writing.
bool turnsDirection(uint code)
{
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

QString shown(QChar character)
{
    const uint code = character.unicode();
    if (code < 0x20 || code == 0x7F)
        return escape("\\x%02X", code);
    if (code >= 0xDC80 && code <= 0xDCFF) // a byte of a file's name
        return escape("\\x%02X", code - 0xDC00);
    const bool breaksLine = code == 0x2028 || code == 0x2029;
    const bool isC1 = code >= 0x80 && code <= 0x9F;
    if (isC1 || breaksLine || turnsDirection(code) || character.isSurrogate())
        return escape("\\u%04X", code);
    return character;
}

} // namespace

QString printable(const QString& text)
{
    QString result;
    for (int i = 0; i < text.size(); ++i) {
        const bool isPair =
            text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        result += isPair ? text.mid(i++, 2) : shown(text.at(i));
    }
    return result;
}

QString printableLines(const QString& text)
{
    QStringList lines;
    for (const QString& line : text.split(QLatin1Char('\n')))
        lines << printable(line);
    return lines.join(QLatin1Char('\n'));
}

} // namespace hx
