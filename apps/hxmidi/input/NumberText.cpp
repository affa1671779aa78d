#include "apps/hxmidi/input/NumberText.h"

#include <algorithm>

namespace hx::midi {

namespace {

bool isHexDigits(const QByteArray& text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    });
}

// "0x" and "-0x" are hexadecimal, all else is decimal, leading zeros included.
std::optional<qint64> numberOf(const QByteArray& text)
{
    const bool negative = text.startsWith('-');
    const QByteArray digits = negative || text.startsWith('+') ? text.mid(1) : text;
    const bool hex = digits.toLower().startsWith("0x");
    const QByteArray rest = hex ? digits.mid(2) : digits;
    if (!isHexDigits(rest))
        return std::nullopt; // where toLongLong() takes another sign, or blanks
    bool ok = false;
    const qint64 value = rest.toLongLong(&ok, hex ? 16 : 10);
    if (!ok)
        return std::nullopt;
    return negative ? -value : value;
}

} // namespace

std::optional<qint64> readNumber(const Place& place, NumberRange range, const QString& purpose,
                                 Findings& findings)
{
    const QByteArray text = place.source.text.mid(place.span.at, place.span.length);
    const std::optional<qint64> value = numberOf(text);
    const QString expected =
        QStringLiteral("a number from %1 to %2, decimal or after 0x hexadecimal")
            .arg(QString::number(range.least), QString::number(range.greatest));
    if (value && *value >= range.least && *value <= range.greatest)
        return value;
    if (value)
        findings.error(QStringLiteral("%1 is out of range for %2").arg(quoted(text), purpose),
                       expected, QStringLiteral("give a number in that range"), place);
    else
        findings.error(QStringLiteral("%1 is not a number for %2").arg(quoted(text), purpose),
                       expected,
                       isHexDigits(text) ? QStringLiteral("write 0x") + QString::fromLatin1(text)
                                         : QStringLiteral("correct it"),
                       place);
    return std::nullopt;
}

} // namespace hx::midi
