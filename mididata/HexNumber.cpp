#include "mididata/HexNumber.h"

#include "mididata/HexDigits.h"
#include "mididata/NumberBytes.h"
#include "mididata/fast/FastPaths.h"

#include <QString>

#include <algorithm>

namespace hx {

namespace {

// The digits of a token without its sign and prefix.
std::string_view digitsOf(std::string_view token)
{
    if (!token.empty() && (token.front() == '-' || token.front() == '+'))
        token.remove_prefix(1);
    const bool prefixed =
        token.size() > 2 && token[0] == '0' && (token[1] == 'x' || token[1] == 'X');
    return prefixed ? token.substr(2) : token;
}

bool areHexDigits(std::string_view text)
{
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return hexValue(c) >= 0; });
}

} // namespace

HexNumber readHexNumber(std::string_view token)
{
    if (fastPaths && token.size() == 2) { // equal to the conversion below
        const int byte = hexByte(token[0], token[1]);
        if (byte >= 0)
            return {static_cast<unsigned int>(byte), true};
    }
    HexNumber number{};
    // Qt 6 no longer passes over every blank that Qt 5 does: A0 and 85 among them.
    const QString text =
        QString::fromLatin1(token.data(), static_cast<int>(token.size())).trimmed();
    number.value = static_cast<unsigned int>(text.toInt(&number.ok, 16));
    return number;
}

QByteArray shownBytes(std::string_view token)
{
    const std::string_view digits = digitsOf(token);
    const QByteArray text(digits.data(), static_cast<int>(digits.size()));
    return QByteArray::fromHex(text.size() % 2 == 0 ? text : '0' + text);
}

std::optional<TextProblemKind> problemOf(std::string_view token, const HexNumber& number)
{
    const std::string_view digits = digitsOf(token);
    if (!number.ok)
        return areHexDigits(digits) ? TextProblemKind::NumberTooLarge : TextProblemKind::NotANumber;
    if (number.value == numberWithoutBytes)
        return TextProblemKind::NumberWithoutBytes;
    if (number.value <= 0xFF && digits.size() <= 2)
        return std::nullopt;
    if (shownBytes(token) == numberBytes(number.value))
        return std::nullopt;
    return TextProblemKind::NumberReadDifferently;
}

} // namespace hx
