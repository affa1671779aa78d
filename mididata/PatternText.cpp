#include "mididata/PatternText.h"

#include "mididata/CompactText.h"
#include "mididata/PatternScanner.h"

namespace hx {

namespace {

QString latin1(std::string_view text)
{
    return QString::fromLatin1(text.data(), static_cast<int>(text.size()));
}

bool isHexOrX(char c)
{
    return c == 'X' || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
}

// The number of literals from `first` on that are side by side and are X, or are neither X nor digit.
int runLength(const QVector<PatternLiteral>& literals, int first, bool areX)
{
    const auto fits = [areX](char c) { return areX ? c == 'X' : !isHexOrX(c); };
    int end = first;
    while (end < literals.size() && fits(literals.at(end).character) &&
           literals.at(end).offset == literals.at(first).offset + end - first)
        ++end;
    return end - first;
}

void reportLiterals(const QVector<PatternLiteral>& literals, const ProblemSink& report)
{
    for (int i = 0; i < literals.size(); ++i) {
        const int wildcards = runLength(literals, i, true);
        const int strangers = runLength(literals, i, false);
        if (wildcards % 2 != 0) // of an odd number the last X stays
            report({TextProblemKind::NeverFits, literals.at(i + wildcards - 1).offset, 1});
        if (strangers > 0)
            report({TextProblemKind::NeverFits, literals.at(i).offset, strangers});
        i += std::max(wildcards + strangers - 1, 0);
    }
}

void reportMistakes(const QVector<TextProblem>& mistakes, qint64 length, const ProblemSink& report)
{
    for (const TextProblem& mistake : mistakes)
        report(mistake);
    if (mistakes.isEmpty())
        report({TextProblemKind::NotAnExpression, 0, length});
}

void reportCompactPattern(std::string_view text, const ProblemSink& report)
{
    const auto length = static_cast<qint64>(text.size());
    const PatternElements elements = scanPattern(text);
    if (elements.size > mostPatternElements || elements.depth > deepestPattern)
        return report({TextProblemKind::PatternTooLarge, 0, length});
    if (!patternExpression(latin1(text)).isValid())
        return reportMistakes(elements.mistakes, length, report);
    if (length == 0)
        report({TextProblemKind::EmptyPattern, 0, 0});
    reportLiterals(elements.literals, report);
    for (const qint64 offset : elements.escapes)
        report({TextProblemKind::LetterEscaped, offset, 2});
}

} // namespace

QRegExp patternExpression(const QString& pattern)
{
    QString text = pattern;
    text.remove(QLatin1Char(' '));
    return QRegExp(text.toUpper().replace(QLatin1String("XX"), QLatin1String("..")));
}

void reportPattern(std::string_view pattern, const ProblemSink& report)
{
    const CompactText compact(pattern);
    reportCompactPattern(compact.text(),
                         [&](const TextProblem& problem) { report(compact.placed(problem)); });
}

} // namespace hx
