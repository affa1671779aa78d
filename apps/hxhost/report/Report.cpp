#include "apps/hxhost/report/Report.h"

#include "apps/hxhost/report/ExitCodeTable.h"
#include "apps/hxhost/report/JsonText.h"
#include "apps/hxhost/report/TextTable.h"
#include "host/base/PrintableText.h"
#include "qt/Saturated.h"

#include <QJsonDocument>

#include <algorithm>

namespace hx::host {

namespace {

QJsonObject withValueAt(QJsonObject object, const QStringList& path, const QJsonValue& value)
{
    const QString& head = path.first();
    if (path.size() == 1)
        object.insert(head, value);
    else
        object.insert(head, withValueAt(object.value(head).toObject(), path.mid(1), value));
    return object;
}

QJsonValue memberOf(const QJsonValue& value, const QString& name)
{
    if (!value.isArray())
        return value.toObject().value(name);
    bool isNumber = false;
    const int index = name.toInt(&isNumber);
    return isNumber ? value.toArray().at(index) : QJsonValue(QJsonValue::Undefined);
}

QString numberText(double number)
{
    const auto whole = qint64(number);
    return double(whole) == number ? QString::number(whole) : QString::number(number);
}

QString compactJson(const QJsonValue& value)
{
    return QString::fromUtf8(
        QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact).trimmed());
}

QString plainText(const QJsonValue& value);

QString elementsText(const QJsonArray& array)
{
    QStringList lines;
    for (const QJsonValue& element : array)
        lines << plainText(element);
    return lines.join(QLatin1Char('\n'));
}

QString plainText(const QJsonValue& value)
{
    switch (value.type()) {
    case QJsonValue::Bool:
        return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case QJsonValue::Double:
        return numberText(value.toDouble());
    case QJsonValue::Array:
        return elementsText(value.toArray());
    case QJsonValue::Object:
        return compactJson(value);
    case QJsonValue::Null:
        return QString();
    default:
        return value.toString();
    }
}

// As people may see it: a list one element a line. A copy: a plugin's text may lie in its library,
// which is gone when the report is printed.
QString shownText(const QJsonValue& value)
{
    if (!value.isArray())
        return printable(plainText(value));
    QStringList lines;
    const QJsonArray elements = value.toArray();
    for (const QJsonValue& element : elements)
        lines << shownText(element);
    return lines.join(QLatin1Char('\n'));
}

QList<QStringList> cellsOf(const QJsonArray& rows, const QStringList& columns)
{
    QList<QStringList> cells;
    for (const QJsonValue& row : rows) {
        QStringList line;
        for (const QString& column : columns)
            line << printable(plainText(row.toObject().value(column)));
        cells << line;
    }
    return cells;
}

} // namespace

void Report::add(const QString& name, const QJsonValue& value, const QString& text)
{
    addHidden(name, value);
    m_lines.push_back(
        {name, text.isEmpty() ? shownText(value) : printable(text), {}, {}, m_isDetail});
}

void Report::addTable(const QString& name, const QStringList& columns, const QJsonArray& rows,
                      const QJsonArray& shown)
{
    addHidden(name, rows);
    m_lines.push_back({name, QString(), columns, shown.isEmpty() ? rows : shown, m_isDetail});
}

void Report::addHidden(const QString& name, const QJsonValue& value)
{
    m_values = withValueAt(m_values, name.split(QLatin1Char('.')), value);
}

void Report::say(const QString& sentence)
{
    m_sentences << sentence;
}

QString Report::toText(bool withDetails) const
{
    const auto isShown = [withDetails](const Line& line) { return withDetails || !line.isDetail; };
    int width = 0;
    for (const Line& line : m_lines)
        width = std::max(width,
                         isShown(line) && line.columns.isEmpty() ? saturated(line.name.size()) : 0);
    QString text;
    for (const Line& line : m_lines) {
        if (!isShown(line))
            continue;
        if (line.columns.isEmpty())
            text += line.name.leftJustified(width) + QLatin1String("  ") + line.text +
                    QLatin1Char('\n');
        else
            text += line.name + QLatin1String(":\n") +
                    textTable(line.columns, cellsOf(line.rows, line.columns));
    }
    for (const QString& sentence : m_sentences)
        text += sentence + QLatin1Char('\n');
    return text;
}

QByteArray Report::toJson(const QString& command) const
{
    QJsonObject document{
        {"command", command},          {"ok", !failed()},
        {"exitCode", int(exitCode())}, {"exitName", exitName(exitCode())},
        {"result", m_values},          {"warnings", QJsonArray::fromStringList(m_warnings)},
        {"error", QJsonValue::Null}};
    if (m_problem)
        document.insert(QStringLiteral("error"), problemObject(*m_problem));
    return jsonText(document);
}

std::optional<QString> Report::field(const QString& name) const
{
    QJsonValue value = m_values;
    for (const QString& part : name.split(QLatin1Char('.')))
        value = memberOf(value, part);
    if (value.isUndefined())
        return std::nullopt;
    return plainText(value);
}

} // namespace hx::host
