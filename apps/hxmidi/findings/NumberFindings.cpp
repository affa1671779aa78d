#include "apps/hxmidi/findings/NumberFindings.h"

#include "mididata/BuilderFields.h"
#include "mididata/HexNumber.h"
#include "mididata/HxMidiData.h"
#include "mididata/NumberBytes.h"

namespace hx::midi {

namespace {

std::string_view viewOf(const QByteArray& text)
{
    return {text.constData(), static_cast<size_t>(text.size())};
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

Finding otherBytes(const QByteArray& token, const Place& place)
{
    const QByteArray given = numberBytes(readHexNumber(viewOf(token)).value);
    const QByteArray shown = shownBytes(viewOf(token));
    return {Severity::Warning,
            QStringLiteral("%1 gives %2: %3")
                .arg(quoted(token), spaced(given), reason(token, given, shown)),
            QString(), QStringLiteral("write the bytes one by one: ") + spaced(shown), place};
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
    if (findBuilderField(viewOf(token)) != nullptr)
        return QStringLiteral("fields belong to builder formats, see 'hxmidi build --help'");
    return otherwise;
}

} // namespace

Finding numberFinding(TextProblemKind kind, const QByteArray& token, const Place& place,
                      Severity severity, const QString& next)
{
    if (kind == TextProblemKind::NumberReadDifferently)
        return otherBytes(token, place);
    if (kind == TextProblemKind::NumberTooLarge)
        return {severity, quoted(token) + QStringLiteral(" is too large for one number"),
                QStringLiteral("at most 7FFFFFFF, a signed 32-bit integer"),
                QStringLiteral("write the bytes one by one"), place};
    if (kind == TextProblemKind::NumberWithoutBytes)
        return {severity, quoted(token) + QStringLiteral(" has no bytes"),
                QStringLiteral("a number other than -1 (all bits set)"), next, place};
    return {severity, quoted(token) + QStringLiteral(" is not a hex number"),
            QStringLiteral("digits 0 to 9 and A to F"), adviceFor(token, next), place};
}

} // namespace hx::midi
