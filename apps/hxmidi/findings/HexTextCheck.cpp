#include "apps/hxmidi/findings/HexTextCheck.h"

#include "apps/hxmidi/findings/Characters.h"

#include "apps/hxmidi/findings/HexToken.h"

#include <algorithm>

namespace hx {

namespace {

struct Piece {
    QByteArray text; // without the blanks inside it
    Span span;
};

// Looks at one text from its first to its last character that is not blank.
class HexTextChecker {
public:
    HexTextChecker(const QByteArray& text, const SourceText& source, Blanks blanks,
                   Severity badPiece, Findings& findings)
        : m_text(text), m_source(source), m_splitAtBlanks(blanks == Blanks::Split),
          m_badPiece(badPiece), m_findings(findings), m_end(m_text.size())
    {
        while (m_at < m_end && m_text.at(m_at) == ' ')
            ++m_at;
        while (m_end > m_at && m_text.at(m_end - 1) == ' ')
            --m_end;
    }

    QByteArray check()
    {
        if (refusesCharacter())
            return QByteArray();
        const int digits = m_end - m_at - (m_splitAtBlanks ? 0 : blanksInside());
        if (digits < 2)
            return tooShort(digits);
        if (hasSeparator())
            return readAll(&HexTextChecker::nextToken);
        if (digits > 2 && isPrefixed())
            return readAll(&HexTextChecker::nextToken);
        if (digits % 2 != 0)
            return oddNumber(digits);
        return readAll(&HexTextChecker::nextPair);
    }

private:
    using Next = Piece (HexTextChecker::*)();

    bool refusesCharacter()
    {
        const auto found = std::find_if_not(m_text.begin(), m_text.end(), isPrintable);
        if (found == m_text.end())
            return false;
        const int at = int(found - m_text.begin());
        m_findings.error(QStringLiteral("the text holds a character that is not plain ASCII"),
                         QStringLiteral("hex digits, blanks and commas"),
                         QStringLiteral("remove it, or give --raw if these are raw bytes"),
                         Place{m_source, {at, 1}});
        return true;
    }

    QByteArray tooShort(int digits)
    {
        if (digits > 0)
            m_findings.add({m_badPiece, QStringLiteral("a text of one character gives no bytes"),
                            QStringLiteral("two digits a byte"),
                            QStringLiteral("write a zero before the digit"),
                            place({m_at, m_end - m_at})});
        return QByteArray();
    }

    QByteArray oddNumber(int digits)
    {
        m_findings.add(
            {m_badPiece,
             QStringLiteral("%1 digits do not make pairs, so nothing is read").arg(digits),
             QStringLiteral("two digits a byte"),
             QStringLiteral("complete the pair; with --tokens each word is a number by itself"),
             place(firstOddWord())});
        return QByteArray();
    }

    // All words between blanks being even, their sum would be.
    Span firstOddWord() const
    {
        int begin = m_at;
        while (begin < m_end) {
            const int blank = m_text.indexOf(' ', begin);
            const int end = blank < 0 ? m_end : std::min(blank, m_end);
            if ((end - begin) % 2 != 0)
                return {begin, end - begin};
            begin = end + 1;
        }
        return {m_at, m_end - m_at};
    }

    QByteArray readAll(Next next)
    {
        QByteArray good;
        int bad = 0;
        while (m_at < m_end) {
            const Piece piece = (this->*next)();
            if (piece.text.isEmpty())
                continue;
            const HexToken read = readHexToken(piece.text);
            if (read.kind == HexToken::Kind::Number) {
                warnOfSurprise(piece.text, read, place(piece.span), m_findings);
                good += piece.text + ',';
                continue;
            }
            ++bad;
            reportBad(piece, read);
            if (read.kind == HexToken::Kind::MinusOne)
                break;
        }
        return bad == 0 ? m_text : good;
    }

    void reportBad(const Piece& piece, const HexToken& read)
    {
        QString next =
            QStringLiteral("correct it; with --lenient it is left out, as HxMidiData does");
        if (read.kind == HexToken::Kind::MinusOne)
            next =
                QStringLiteral("correct it; with --lenient the text ends here, as for HxMidiData");
        else if (piece.text.contains('x') || piece.text.contains('X'))
            next =
                QStringLiteral("put commas between numbers that begin with 0x, or give --tokens");
        reportBadToken(piece.text, read, place(piece.span), m_badPiece, next, m_findings);
    }

    Piece nextToken()
    {
        Piece piece{QByteArray(), {m_at, 0}};
        for (; m_at < m_end && !isSeparator(m_text.at(m_at)); ++m_at)
            take(piece);
        ++m_at;
        return piece;
    }

    Piece nextPair()
    {
        Piece piece{QByteArray(), {m_at, 0}};
        for (; m_at < m_end && piece.text.size() < 2; ++m_at)
            take(piece);
        return piece;
    }

    // Adds the current character to the piece, whose span goes from its first to its last one.
    void take(Piece& piece) const
    {
        if (m_text.at(m_at) == ' ')
            return;
        if (piece.text.isEmpty())
            piece.span.at = m_at;
        piece.text += m_text.at(m_at);
        piece.span.length = m_at + 1 - piece.span.at;
    }

    bool isSeparator(char c) const { return c == ',' || (m_splitAtBlanks && c == ' '); }

    bool hasSeparator() const
    {
        return std::any_of(m_text.begin() + m_at, m_text.begin() + m_end,
                           [this](char c) { return isSeparator(c); });
    }

    int blanksInside() const
    {
        return int(std::count(m_text.begin() + m_at, m_text.begin() + m_end, ' '));
    }

    bool isPrefixed() const
    {
        int second = m_at + 1; // the first character is not blank
        while (m_text.at(second) == ' ')
            ++second;
        return m_text.at(m_at) == '0' && (m_text.at(second) | 0x20) == 'x';
    }

    Place place(Span span) const { return {m_source, span}; }

    const QByteArray& m_text;
    const SourceText& m_source;
    bool m_splitAtBlanks;
    Severity m_badPiece;
    Findings& m_findings;
    int m_at = 0;
    int m_end;
};

} // namespace

QByteArray checkHexText(const QByteArray& text, const SourceText& source, Blanks blanks,
                        Severity badPiece, Findings& findings)
{
    return HexTextChecker(text, source, blanks, badPiece, findings).check();
}

} // namespace hx
