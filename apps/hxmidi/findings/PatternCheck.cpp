#include "apps/hxmidi/findings/PatternCheck.h"

#include "apps/hxmidi/findings/Characters.h"
#include "apps/hxmidi/findings/PatternScanner.h"

#include <algorithm>

namespace hx {

namespace {

// Beyond these QRegExp runs out of memory or of stack.
constexpr qint64 mostElements = 10000;
constexpr int deepestNesting = 100;

bool refusesCharacter(const SourceText& pattern, Findings& findings)
{
    const QByteArray& text = pattern.text;
    const auto found = std::find_if_not(text.begin(), text.end(), isPrintable);
    if (found == text.end())
        return false;
    findings.error(QStringLiteral("the pattern holds a character that is not plain ASCII"),
                   QStringLiteral("hex digits, dots and the signs of regular expressions"),
                   QStringLiteral("remove it; only blanks may separate"),
                   Place{pattern, {int(found - text.begin()), 1}});
    return true;
}

bool refusesSize(const SourceText& pattern, const PatternElements& elements, Findings& findings)
{
    if (elements.size <= mostElements && elements.depth <= deepestNesting)
        return false;
    findings.error(QStringLiteral("the pattern is too large"),
                   QStringLiteral("at most %1 elements with all repetitions written out, and "
                                  "parentheses at most %2 deep")
                       .arg(QString::number(mostElements), QString::number(deepestNesting)),
                   QStringLiteral("use fewer or smaller repetitions"),
                   Place{pattern, {0, pattern.text.size()}});
    return true;
}

bool refusesExpression(const SourceText& pattern, const Findings& why, Findings& findings)
{
    const QRegExp expression = expressionOf(pattern.text);
    if (expression.isValid())
        return false;
    for (const Finding& finding : why.kept())
        findings.add(finding);
    if (!why.hasErrors())
        findings.error(
            QStringLiteral("the pattern is no regular expression: ") + expression.errorString(),
            QStringLiteral("QRegExp's syntax"), QStringLiteral("see docs/formats/pattern.md"),
            Place{pattern, {0, pattern.text.size()}});
    return true;
}

// Whether only blanks, which are removed, stand between two places of the pattern.
bool areNeighbours(const QByteArray& text, int at, int next)
{
    return std::all_of(text.begin() + at + 1, text.begin() + next, [](char c) { return c == ' '; });
}

// The number of literals from `first` on that stand side by side and are, or are not, X.
int runLength(const QByteArray& text, const QVector<PatternLiteral>& literals, int first, bool areX)
{
    const auto fits = [&](const PatternLiteral& literal) {
        return areX ? literal.character == 'X'
                    : literal.character != 'X' && !isHexDigit(literal.character);
    };
    int end = first;
    while (end < literals.size() && fits(literals.at(end)) &&
           (end == first || areNeighbours(text, literals.at(end - 1).at, literals.at(end).at)))
        ++end;
    return end - first;
}

void warnOfNever(const SourceText& pattern, int begin, int end, Findings& findings)
{
    findings.warning(QStringLiteral("%1 never fits, as it is no hex digit")
                         .arg(quoted(pattern.text.mid(begin, end - begin))),
                     QStringLiteral("write .. or XX for a byte of any value, . for one digit"),
                     Place{pattern, {begin, end - begin}});
}

void warnOfLiterals(const SourceText& pattern, const QVector<PatternLiteral>& literals,
                    Findings& findings)
{
    for (int i = 0; i < literals.size(); ++i) {
        const int wildcards = runLength(pattern.text, literals, i, true);
        const int strangers = runLength(pattern.text, literals, i, false);
        if (wildcards % 2 != 0) { // of an odd number the last X stays
            const int at = literals.at(i + wildcards - 1).at;
            warnOfNever(pattern, at, at + 1, findings);
        }
        if (strangers > 0)
            warnOfNever(pattern, literals.at(i).at, literals.at(i + strangers - 1).at + 1,
                        findings);
        i += std::max(wildcards + strangers - 1, 0);
    }
}

void warnOfEmptiness(const SourceText& pattern, Findings& findings)
{
    if (pattern.text.trimmed().isEmpty())
        findings.warning(QStringLiteral("the pattern is empty and fits anything"),
                         QStringLiteral("write the bytes to look for, such as 'F0 7E .. 06 02'"));
}

void warnOfEscapes(const SourceText& pattern, const QVector<int>& escapes, Findings& findings)
{
    for (const int at : escapes)
        findings.warning(QStringLiteral("all letters are made upper case, also after a backslash"),
                         QStringLiteral("write a class such as [0-9] instead"),
                         Place{pattern, {at, 2}});
}

} // namespace

QRegExp expressionOf(const QByteArray& pattern)
{
    QString text = QString::fromLatin1(pattern);
    text.remove(QLatin1Char(' '));
    return QRegExp(text.toUpper().replace(QLatin1String("XX"), QLatin1String("..")));
}

bool checkPattern(const SourceText& pattern, Findings& findings)
{
    if (refusesCharacter(pattern, findings))
        return false;
    Findings why;
    const PatternElements elements = scanPattern(pattern, why);
    if (refusesSize(pattern, elements, findings) || refusesExpression(pattern, why, findings))
        return false;
    warnOfEmptiness(pattern, findings);
    warnOfLiterals(pattern, elements.literals, findings);
    warnOfEscapes(pattern, elements.escapes, findings);
    return true;
}

} // namespace hx
