#include "apps/hxmidi/findings/Excerpt.h"

#include "qt/Saturated.h"

#include <algorithm>

namespace hx::midi {

namespace {

constexpr int shownBefore = 40;
constexpr int shownAfter = 30;
constexpr int longestPiece = 40;

struct Line {
    int begin;
    int end;
};

Line lineAround(const QByteArray& text, int at)
{
    const int before = at > 0 ? saturated(text.lastIndexOf('\n', at - 1)) : -1;
    const int after = saturated(text.indexOf('\n', at));
    return {before + 1, after < 0 ? saturated(text.size()) : after};
}

bool isInsideCharacter(const QByteArray& text, int at)
{
    return at < text.size() && (static_cast<unsigned char>(text.at(at)) & 0xC0) == 0x80;
}

// The nearest beginning of a UTF-8 character at or before `at`.
int characterAt(const QByteArray& text, int at)
{
    while (at > 0 && isInsideCharacter(text, at))
        --at;
    return at;
}

// The nearest end of one at or after `at`.
int characterEnd(const QByteArray& text, int at)
{
    while (isInsideCharacter(text, at))
        ++at;
    return at;
}

QString part(const QByteArray& text, int begin, int end)
{
    return harmless(text.mid(begin, end - begin));
}

} // namespace

LineAndColumn lineAndColumn(const Place& place)
{
    const QByteArray& text = place.source.text;
    const int at = std::min(place.span.at, saturated(text.size()));
    const int line = int(std::count(text.begin(), text.begin() + at, '\n')) + 1;
    const QString before = part(text, lineAround(text, at).begin, characterAt(text, at));
    return {line, saturated(before.size()) + 1};
}

QString excerpt(const Place& place)
{
    const QByteArray& text = place.source.text;
    const int at = characterAt(text, std::min(place.span.at, saturated(text.size())));
    const Line line = lineAround(text, at);
    const int begin = characterAt(text, std::max(line.begin, at - shownBefore));
    const int pieceEnd =
        characterEnd(text, std::min({line.end, at + place.span.length, at + longestPiece}));
    const int end = characterEnd(text, std::min(line.end, pieceEnd + shownAfter));
    const QString before =
        (begin > line.begin ? QStringLiteral("...") : QString()) + part(text, begin, at);
    const QString piece = part(text, at, pieceEnd);
    const QString after = part(text, pieceEnd, end);
    return QStringLiteral("  %1%2%3%4\n  %5^%6\n")
        .arg(before, piece, after, end < line.end ? QStringLiteral("...") : QString(),
             QString(before.size(), QLatin1Char(' ')),
             QString(std::max(saturated(piece.size()) - 1, 0), QLatin1Char('~')));
}

} // namespace hx::midi
