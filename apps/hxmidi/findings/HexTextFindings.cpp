#include "apps/hxmidi/findings/HexTextFindings.h"

#include "apps/hxmidi/findings/Characters.h"
#include "apps/hxmidi/findings/NumberFindings.h"
#include "qt/Saturated.h"

#include <algorithm>

namespace hx::midi {

namespace {

bool refusesCharacter(const QByteArray& text, const SourceText& source, Findings& findings)
{
    const auto found = std::find_if_not(text.begin(), text.end(), isPrintable);
    if (found == text.end())
        return false;
    findings.error(QStringLiteral("the text holds a character that is not plain ASCII"),
                   QStringLiteral("hex digits, blanks and commas"),
                   QStringLiteral("remove it, or give --raw if these are raw bytes"),
                   Place{source, {int(found - text.begin()), 1}});
    return true;
}

// The first word of the piece with an odd number of characters. There is one when they are odd in all.
Span firstOddWord(const QByteArray& text, Span piece)
{
    const int pieceEnd = piece.at + piece.length;
    for (int begin = piece.at; begin < pieceEnd;) {
        const int blank = saturated(text.indexOf(' ', begin));
        const int end = blank < 0 ? pieceEnd : std::min(blank, pieceEnd);
        if ((end - begin) % 2 != 0)
            return {begin, end - begin};
        begin = end + 1;
    }
    return piece;
}

class HexTextFindings {
public:
    HexTextFindings(const QByteArray& text, const SourceText& source, Severity badPiece,
                    Findings& findings)
        : m_text(text), m_source(source), m_badPiece(badPiece), m_findings(findings)
    {
    }

    void add(const TextProblem& problem)
    {
        const Span span{int(problem.offset), int(problem.length)};
        if (problem.kind == TextProblemKind::SingleCharacter)
            addSingleCharacter(span);
        else if (problem.kind == TextProblemKind::OddDigits)
            addOddDigits(span);
        else
            addNumber(problem.kind, span);
    }

private:
    void addSingleCharacter(Span span)
    {
        m_findings.add({m_badPiece, QStringLiteral("a text of one character gives no bytes"),
                        QStringLiteral("two digits a byte"),
                        QStringLiteral("write a zero before the digit"), Place{m_source, span}});
    }

    void addOddDigits(Span span)
    {
        const auto digits = withoutBlanks(span).size();
        m_findings.add(
            {m_badPiece,
             QStringLiteral("%1 digits do not make pairs, so nothing is read").arg(digits),
             QStringLiteral("two digits a byte"),
             QStringLiteral("complete the pair; with --tokens each word is a number by itself"),
             Place{m_source, firstOddWord(m_text, span)}});
    }

    void addNumber(TextProblemKind kind, Span span)
    {
        const QByteArray token = withoutBlanks(span);
        QString next =
            QStringLiteral("correct it; with --lenient it is left out, as HxMidiData does");
        if (kind == TextProblemKind::NumberWithoutBytes)
            next =
                QStringLiteral("correct it; with --lenient the text ends here, as for HxMidiData");
        else if (token.contains('x') || token.contains('X'))
            next =
                QStringLiteral("put commas between numbers that begin with 0x, or give --tokens");
        m_findings.add(numberFinding(kind, token, Place{m_source, span}, m_badPiece, next));
    }

    QByteArray withoutBlanks(Span span) const
    {
        return m_text.mid(span.at, span.length).replace(' ', "");
    }

    const QByteArray& m_text;
    const SourceText& m_source;
    Severity m_badPiece;
    Findings& m_findings;
};

} // namespace

QByteArray readHexText(const QByteArray& text, const SourceText& source, Blanks blanks,
                       Severity badPiece, Findings& findings)
{
    if (refusesCharacter(text, source, findings))
        return QByteArray();
    HexTextFindings problems(text, source, badPiece, findings);
    return readHexText({text.constData(), static_cast<size_t>(text.size())}, blanks,
                       [&](const TextProblem& problem) { problems.add(problem); });
}

} // namespace hx::midi
