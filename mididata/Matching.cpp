#include "mididata/HxMidiData.h"
#include "mididata/PatternText.h"
#include "mididata/fast/ByteSearch.h"
#include "mididata/fast/DigitPattern.h"
#include "mididata/fast/ExpressionCache.h"
#include "mididata/fast/FastPaths.h"
#include "mididata/fast/PlainPattern.h"

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

bool matchExpression(const HxMidiData& data, const char* pattern, bool atStart)
{
    const QRegExp expression = hx::patternExpression(QString::fromLatin1(pattern));
    return found(expression.indexIn(data.toString(-1)), atStart);
}

// Not inline in match(), which most calls leave sooner.
Q_NEVER_INLINE bool matchItems(const HxMidiData& data, const char* pattern, const char* end,
                               bool atStart)
{
    const hx::Fit fit = hx::fitItems(pattern, end, data.bytes, atStart);
    return fit == hx::Fit::OutsideGrammar ? found(hx::findExpression(pattern, data), atStart)
                                          : fit == hx::Fit::Yes;
}

} // namespace

bool HxMidiData::match(const char* pattern, bool atStart) const
{
    if (pattern == nullptr)
        return true;
    if (!hx::fastPaths)
        return matchExpression(*this, pattern, atStart);
    const auto length = static_cast<std::ptrdiff_t>(std::strlen(pattern));
    const hx::PlainFit plain = hx::fitPlain(pattern, length, bytes);
    if (plain == hx::PlainFit::Yes)
        return true;
    if (plain == hx::PlainFit::No && atStart)
        return false;
    return matchItems(*this, pattern, pattern + length, atStart);
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
