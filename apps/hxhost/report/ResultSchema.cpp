#include "apps/hxhost/report/ResultSchema.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace hx::host {

namespace {

QJsonObject definition(const QString& name)
{
    static const QJsonObject definitions = QJsonDocument::fromJson(QByteArray(resultSchemaText))
                                               .object()
                                               .value(QStringLiteral("definitions"))
                                               .toObject();
    return definitions.value(name).toObject();
}

// The node itself, or what its "$ref" names: "#/definitions/NAME".
QJsonObject resolved(const QJsonValue& node)
{
    const QString reference = node.toObject().value(QStringLiteral("$ref")).toString();
    return reference.isEmpty() ? node.toObject()
                               : definition(reference.section(QLatin1Char('/'), 2));
}

QJsonObject resultOf(const QString& command)
{
    return definition(QStringLiteral("result.") + command);
}

QJsonObject propertiesOf(const QJsonObject& node)
{
    return node.value(QStringLiteral("properties")).toObject();
}

// The node of a member, or of an element when the node is a list; empty when there is none.
QJsonObject memberOf(const QJsonObject& node, const QString& name)
{
    bool isIndex = false;
    name.toUInt(&isIndex);
    if (isIndex && node.contains(QStringLiteral("items")))
        return resolved(node.value(QStringLiteral("items")));
    return resolved(propertiesOf(node).value(name));
}

void addFields(const QJsonObject& node, const QString& prefix, QStringList& names)
{
    const QJsonObject properties = propertiesOf(node);
    for (auto it = properties.begin(); it != properties.end(); ++it) {
        const QString name = prefix + it.key();
        const QJsonObject member = resolved(it.value());
        if (propertiesOf(member).isEmpty())
            names << name;
        else
            addFields(member, name + QLatin1Char('.'), names);
    }
}

} // namespace

bool resultHasField(const QString& command, const QString& name)
{
    QJsonObject node = resultOf(command);
    const QStringList parts = name.split(QLatin1Char('.'));
    for (const QString& part : parts)
        node = memberOf(node, part);
    return !node.isEmpty();
}

QStringList resultFields(const QString& command)
{
    QStringList names;
    addFields(resultOf(command), QString(), names);
    return names;
}

} // namespace hx::host
