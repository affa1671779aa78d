#include "apps/hxhost/report/JsonText.h"

#include "host/base/PrintableText.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace hx::host {

namespace {

bool isStray(const QString& text, int position)
{
    const QChar unit = text.at(position);
    const bool hasHigh = position > 0 && text.at(position - 1).isHighSurrogate();
    const bool hasLow = position + 1 < text.size() && text.at(position + 1).isLowSurrogate();
    return (unit.isLowSurrogate() && !hasHigh) || (unit.isHighSurrogate() && !hasLow);
}

QString shownStrayUnits(const QString& text)
{
    QString result;
    for (int i = 0; i < text.size(); ++i)
        result += isStray(text, i) ? printable(text.at(i)) : QString(text.at(i));
    return result;
}

} // namespace

QJsonValue withoutStrayUnits(const QJsonValue& value)
{
    if (value.isString())
        return shownStrayUnits(value.toString());
    if (value.isArray()) {
        QJsonArray array;
        const QJsonArray elements = value.toArray();
        for (const QJsonValue& element : elements)
            array << withoutStrayUnits(element);
        return array;
    }
    if (!value.isObject())
        return value;
    QJsonObject object;
    const QJsonObject members = value.toObject();
    for (auto it = members.begin(); it != members.end(); ++it)
        object.insert(it.key(), withoutStrayUnits(it.value()));
    return object;
}

QJsonObject problemObject(const Problem& problem)
{
    return {{"what", problem.what}, {"expected", problem.expected}, {"next", problem.next}};
}

QByteArray jsonText(const QJsonObject& document)
{
    QByteArray text =
        QJsonDocument(withoutStrayUnits(document).toObject()).toJson(QJsonDocument::Indented);
    text.replace('\x7F', "\\u007f");
    for (int code = 0x80; code < 0xA0; ++code)
        text.replace(QString(QChar(code)).toUtf8(), "\\u00" + QByteArray::number(code, 16));
    return text;
}

} // namespace hx::host
