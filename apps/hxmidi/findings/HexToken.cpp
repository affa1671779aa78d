#include "apps/hxmidi/findings/HexToken.h"

#include "apps/hxmidi/findings/Characters.h"

#include "apps/hxmidi/commands/BuilderField.h"

#include "mididata/HxMidiData.h"

#include <algorithm>

namespace hx {

namespace {

// The digits of a token without its sign and prefix.
QByteArray digitsOf(QByteArray token)
{
    if (token.startsWith('-') || token.startsWith('+'))
        token.remove(0, 1);
    if (token.size() > 2 && token.toLower().startsWith("0x"))
        token.remove(0, 2);
    return token;
}

bool isAllDigits(const QByteArray& digits)
{
    return !digits.isEmpty() && std::all_of(digits.begin(), digits.end(), isHexDigit);
}

// The bytes that the digits show, two digits each.
QByteArray shownBytes(const QByteArray& token)
{
    const QByteArray digits = digitsOf(token);
    return QByteArray::fromHex(digits.size() % 2 == 0 ? digits : '0' + digits);
}

QString spaced(const QByteArray& bytes)
{
    return HxMidiData(bytes).toString(' ', -1);
}

QString reason(const QByteArray& token, const QByteArray& given, const QByteArray& shown)
{
    if (token.startsWith('-'))
        return QStringLiteral("a negative number is taken by its 32-bit pattern");
    if (given.size() < shown.size())
        return QStringLiteral("it is one number, and leading zeros give no bytes");
    if (given.size() == shown.size())
        return QStringLiteral("of 0x100 to 0xFFFE the high byte is lost");
    return given.size() == 3 ? QStringLiteral("numbers from 0xFFFF on take three bytes")
                             : QStringLiteral("numbers from 0xFFFFFF on take four bytes");
}

bool holdsWildcard(const QByteArray& token)
{
    const QByteArray upper = token.toUpper();
    return upper.contains("..") || upper.contains("XX") || upper.contains(".*");
}

QString adviceFor(const QByteArray& token, const QString& otherwise)
{
    if (holdsWildcard(token))
        return QStringLiteral("wildcards belong to patterns, see 'hxmidi match --help'");
    if (findBuilderField(token) != nullptr)
        return QStringLiteral("fields belong to builder formats, see 'hxmidi build --help'");
    return otherwise;
}

} // namespace

HexToken readHexToken(const QByteArray& token)
{
    bool ok = false;
    const int value = QString::fromLatin1(token).toInt(&ok, 16);
    if (!ok)
        return {isAllDigits(digitsOf(token)) ? HexToken::Kind::TooLarge : HexToken::Kind::NotHex,
                QByteArray()};
    if (value == -1)
        return {HexToken::Kind::MinusOne, QByteArray()};
    return {HexToken::Kind::Number,
            HxMidiData::numHexToByteArray(static_cast<unsigned int>(value))};
}

void warnOfSurprise(const QByteArray& token, const HexToken& read, const Place& place,
                    Findings& findings)
{
    const QByteArray shown = shownBytes(token);
    if (read.bytes == shown)
        return;
    findings.warning(QStringLiteral("%1 gives %2: %3")
                         .arg(quoted(token), spaced(read.bytes), reason(token, read.bytes, shown)),
                     QStringLiteral("write the bytes one by one: ") + spaced(shown), place);
}

void reportBadToken(const QByteArray& token, const HexToken& read, const Place& place,
                    Severity severity, const QString& next, Findings& findings)
{
    if (read.kind == HexToken::Kind::TooLarge)
        findings.add({severity, quoted(token) + QStringLiteral(" is too large for one number"),
                      QStringLiteral("at most 7FFFFFFF, a signed 32-bit integer"),
                      QStringLiteral("write the bytes one by one"), place});
    else if (read.kind == HexToken::Kind::MinusOne)
        findings.add({severity, quoted(token) + QStringLiteral(" has no bytes"),
                      QStringLiteral("a number other than -1 (all bits set)"), next, place});
    else
        findings.add({severity, quoted(token) + QStringLiteral(" is no hex number"),
                      QStringLiteral("digits 0 to 9 and A to F"), adviceFor(token, next), place});
}

} // namespace hx
