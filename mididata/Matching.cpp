#include "mididata/HxMidiData.h"
#include "mididata/PatternText.h"
#include "mididata/fast/ByteSearch.h"
#include "mididata/fast/DigitPattern.h"
#include "mididata/fast/ExpressionCache.h"
#include "mididata/fast/FastPaths.h"

#include <cstring>

namespace {

// The array's bytes up to the first zero or the end; an adopted buffer has no zero after its end.
QByteArray textOf(const QByteArray& array)
{
    const auto length = qstrnlen(array.constData(), static_cast<uint>(array.size()));
    return QByteArray(array.constData(), static_cast<int>(length));
}

bool found(int position, bool atStart)
{
    return atStart ? position == 0 : position >= 0;
}

// Not inline in match(), which most calls leave sooner.
Q_NEVER_INLINE bool matchExpression(const HxMidiData& data, const char* pattern, bool atStart)
{
    const QString text = data.toString(-1);
    const int position = hx::fastPaths
                             ? hx::findExpression(pattern, text)
                             : hx::patternExpression(QString::fromLatin1(pattern)).indexIn(text);
    return found(position, atStart);
}

} // namespace

bool HxMidiData::match(const char* pattern, bool atStart) const
{
    if (pattern == nullptr)
        return true;
    const hx::Fit fit = hx::fastPaths ? hx::fit(pattern, bytes, atStart) : hx::Fit::OutsideGrammar;
    if (fit != hx::Fit::OutsideGrammar)
        return fit == hx::Fit::Yes;
    return matchExpression(*this, pattern, atStart);
}

bool HxMidiData::match(QRegExp rx, bool atStart) const
{
    rx.setCaseSensitivity(Qt::CaseInsensitive);
    return found(rx.indexIn(toString(-1)), atStart);
}

bool HxMidiData::contains(const char* pattern) const
{
    return match(pattern, false);
}

bool HxMidiData::contains(const QByteArray& raw) const
{
    return hx::fastPaths ? hx::containsBytes(bytes, raw) : bytes.contains(raw);
}

bool HxMidiData::contains(const HxMidiData& other) const
{
    return contains(other.bytes);
}

bool HxMidiData::startsWith(const char* pattern) const
{
    return match(pattern, true);
}

bool HxMidiData::startsWith(const QByteArray& pattern) const
{
    return match(textOf(pattern).constData(), true);
}

bool HxMidiData::startsWith(const HxMidiData& other) const
{
    return startsWith(other.bytes);
}
