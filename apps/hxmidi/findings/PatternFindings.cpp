#include "apps/hxmidi/findings/PatternFindings.h"

#include "apps/hxmidi/findings/Characters.h"

#include "mididata/PatternText.h"

#include <algorithm>

namespace hx::midi {

namespace {

bool refusesPatternCharacter(const SourceText& pattern, Findings& findings)
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

Finding notAnExpression(const QByteArray& pattern)
{
    const QString why = patternExpression(QString::fromLatin1(pattern)).errorString();
    return {Severity::Error, QStringLiteral("the pattern is not a regular expression: ") + why,
            QStringLiteral("QRegExp's syntax"), QStringLiteral("see docs/formats/pattern.md"),
            std::nullopt};
}

Finding tooLarge()
{
    return {Severity::Error, QStringLiteral("the pattern is too large"),
            QStringLiteral("at most %1 elements with all repetitions written out, and "
                           "parentheses at most %2 deep")
                .arg(QString::number(mostPatternElements), QString::number(deepestPattern)),
            QStringLiteral("use fewer or smaller repetitions"), std::nullopt};
}

Finding neverFits(const QByteArray& piece)
{
    return {Severity::Warning,
            QStringLiteral("%1 never fits, as it is not a hex digit").arg(quoted(piece)), QString(),
            QStringLiteral("write .. or XX for a byte of any value, . for one digit"),
            std::nullopt};
}

// A finding without a place; `piece` is what the problem is about, which may be the whole pattern.
Finding findingOf(TextProblemKind kind, const QByteArray& piece)
{
    const auto error = [](const QString& what, const QString& expected, const QString& next) {
        return Finding{Severity::Error, what, expected, next, std::nullopt};
    };
    const auto warning = [](const QString& what, const QString& next) {
        return Finding{Severity::Warning, what, QString(), next, std::nullopt};
    };
    switch (kind) {
    case TextProblemKind::ParenthesisNotOpen:
        return error(QStringLiteral("no parenthesis is open here"), QStringLiteral("( and )"),
                     QStringLiteral("take the closing one away"));
    case TextProblemKind::ParenthesisNotClosed:
        return error(QStringLiteral("the parenthesis is not closed"), QStringLiteral("( and )"),
                     QStringLiteral("close it, or write none"));
    case TextProblemKind::BracketNotClosed:
        return error(QStringLiteral("the bracket is not closed"), QStringLiteral("[digits]"),
                     QStringLiteral("add the closing bracket"));
    case TextProblemKind::NothingEscaped:
        return error(QStringLiteral("nothing follows the backslash"), QString(),
                     QStringLiteral("take it away"));
    case TextProblemKind::NothingToRepeat:
        return error(QStringLiteral("there is nothing here that could be repeated"),
                     QStringLiteral("a digit, a dot, a class or a group before it"),
                     QStringLiteral("for any digits write .*"));
    case TextProblemKind::PatternTooLarge:
        return tooLarge();
    case TextProblemKind::EmptyPattern:
        return warning(QStringLiteral("the pattern is empty and fits anything"),
                       QStringLiteral("write the bytes to look for, such as 'F0 7E .. 06 02'"));
    case TextProblemKind::NeverFits:
        return neverFits(piece);
    case TextProblemKind::LetterEscaped:
        return warning(QStringLiteral("all letters are made upper case, also after a backslash"),
                       QStringLiteral("write a class such as [0-9] instead"));
    default:
        return notAnExpression(piece);
    }
}

} // namespace

bool checkPattern(const SourceText& pattern, Findings& findings)
{
    if (refusesPatternCharacter(pattern, findings))
        return false;
    bool usable = true;
    const QByteArray& text = pattern.text;
    reportPattern({text.constData(), static_cast<size_t>(text.size())},
                  [&](const TextProblem& problem) {
                      const Span span{int(problem.offset), int(problem.length)};
                      Finding finding = findingOf(problem.kind, text.mid(span.at, span.length));
                      if (problem.kind != TextProblemKind::EmptyPattern)
                          finding.place = Place{pattern, span};
                      usable = usable && finding.severity != Severity::Error;
                      findings.add(finding);
                  });
    return usable;
}

} // namespace hx::midi
