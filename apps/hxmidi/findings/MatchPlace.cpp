#include "apps/hxmidi/findings/MatchPlace.h"

#include "mididata/PatternText.h"
#include "qt/Saturated.h"

namespace hx::midi {

namespace {

constexpr int mostBytes = 4096;
constexpr int mostWords = 512;

QVector<Span> wordsOf(const QByteArray& pattern)
{
    QVector<Span> words;
    for (int at = 0; at < pattern.size();) {
        const int blank = saturated(pattern.indexOf(' ', at));
        const int end = blank < 0 ? saturated(pattern.size()) : blank;
        if (end > at)
            words += Span{at, end - at};
        at = end + 1;
    }
    return words;
}

bool isPattern(const QByteArray& text)
{
    return patternExpression(QString::fromLatin1(text)).isValid();
}

} // namespace

std::optional<MatchPlace> findMatch(const HxMidiData& data, const QByteArray& pattern, bool atStart)
{
    if (!data.match(pattern.constData(), atStart))
        return std::nullopt;
    const QRegExp expression = patternExpression(QString::fromLatin1(pattern));
    const int digit = expression.indexIn(data.toString(-1));
    return MatchPlace{digit, expression.matchedLength()};
}

std::optional<Span> firstFailingWord(const HxMidiData& data, const QByteArray& pattern,
                                     bool atStart)
{
    const QVector<Span> words = wordsOf(pattern);
    if (data.bytes.size() > mostBytes || words.size() > mostWords || pattern.contains('|'))
        return std::nullopt;
    for (const Span word : words) {
        const QByteArray start = pattern.left(word.at + word.length);
        if (isPattern(start) && !data.match(start.constData(), atStart))
            return word;
    }
    return std::nullopt;
}

} // namespace hx::midi
