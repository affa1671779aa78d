#include "apps/hxmidi/findings/FindingText.h"

#include "apps/hxmidi/findings/Excerpt.h"

#include <QJsonObject>

namespace hx::midi {

namespace {

QString wordFor(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return QStringLiteral("error");
    case Severity::Warning:
        return QStringLiteral("warning");
    case Severity::Note:
        break;
    }
    return QStringLiteral("note");
}

QString placeText(const Place& place)
{
    if (place.source.name.isEmpty())
        return QString();
    const LineAndColumn at = lineAndColumn(place);
    return QStringLiteral("%1:%2:%3: ")
        .arg(harmless(place.source.name.toUtf8()), QString::number(at.line),
             QString::number(at.column));
}

QString labelled(const char* label, const QString& text)
{
    return text.isEmpty() ? QString()
                          : QStringLiteral("  %1: %2\n").arg(QLatin1String(label), text);
}

QString toText(const Finding& finding)
{
    QString text = wordFor(finding.severity) + QStringLiteral(": ");
    if (finding.place)
        text += placeText(*finding.place);
    text += finding.what + QLatin1Char('\n');
    if (finding.place)
        text += excerpt(*finding.place);
    return text + labelled("expected", finding.expected) + labelled("next", finding.next);
}

QString leftOutText(const Findings& findings, Severity severity)
{
    const int leftOut = findings.count(severity) - Findings::keptOfEach;
    if (leftOut < 1)
        return QString();
    return QStringLiteral("%1: and %2 more like these\n")
        .arg(wordFor(severity), QString::number(leftOut));
}

void addPlace(QJsonObject& object, const Place& place)
{
    const LineAndColumn at = lineAndColumn(place);
    object.insert(QStringLiteral("source"), place.source.name);
    object.insert(QStringLiteral("line"), at.line);
    object.insert(QStringLiteral("column"), at.column);
    object.insert(QStringLiteral("text"),
                  QString::fromUtf8(place.source.text.mid(place.span.at, place.span.length)));
}

QJsonObject toJson(const Finding& finding)
{
    QJsonObject object{{QStringLiteral("what"), finding.what}};
    if (!finding.expected.isEmpty())
        object.insert(QStringLiteral("expected"), finding.expected);
    if (!finding.next.isEmpty())
        object.insert(QStringLiteral("next"), finding.next);
    if (finding.place)
        addPlace(object, *finding.place);
    return object;
}

} // namespace

QString toText(const Findings& findings)
{
    QString text;
    for (const Finding& finding : findings.kept())
        text += toText(finding);
    for (const Severity severity : {Severity::Error, Severity::Warning, Severity::Note})
        text += leftOutText(findings, severity);
    return text;
}

QJsonArray toJson(const Findings& findings, Severity severity)
{
    QJsonArray array;
    for (const Finding& finding : findings.kept()) {
        if (finding.severity == severity)
            array.append(toJson(finding));
    }
    return array;
}

} // namespace hx::midi
