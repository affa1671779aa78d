#include "apps/hxhost/batch/BatchUnit.h"

#include "host/base/PrintableText.h"

#include <QJsonArray>

namespace hx::host {

namespace {

QJsonValue valueAt(const QJsonObject& document, const QString& path)
{
    QJsonValue value = document.value(QStringLiteral("result"));
    for (const QString& name : path.split(QLatin1Char('.')))
        value = value.toObject().value(name);
    return value;
}

QString textAt(const QJsonObject& document, const QString& path)
{
    return reportText(valueAt(document, path).toString());
}

// As people read it where it is text, else its bytes.
QString serialAt(const QJsonObject& document, const QString& path)
{
    const QString text = textAt(document, path + QStringLiteral(".text"));
    return text.isEmpty() ? textAt(document, path + QStringLiteral(".number")) : text;
}

} // namespace

const QString succeededOutcome = QStringLiteral("succeeded");
const QString sameProductOutcome = QStringLiteral("same-product");
const QString crashedOutcome = QStringLiteral("crashed");
const QString hungOutcome = QStringLiteral("hung");

QString reportText(const QString& text)
{
    return printable(text)
        .replace(QChar(0xFFFE), QStringLiteral("\\uFFFE"))
        .replace(QChar(0xFFFF), QStringLiteral("\\uFFFF"));
}

bool BatchUnit::succeeded() const
{
    return outcome == succeededOutcome;
}

bool BatchUnit::isSkipped() const
{
    return outcome == sameProductOutcome;
}

bool BatchUnit::isBroken() const
{
    return outcome == crashedOutcome || outcome == hungOutcome;
}

void BatchUnit::readInfo(const QJsonObject& document)
{
    identity = textAt(document, QStringLiteral("identity.identifier"));
    serial = serialAt(document, QStringLiteral("esn"));
    versionBefore = textAt(document, QStringLiteral("version.version"));
}

void BatchUnit::readUpdate(const QJsonObject& document)
{
    const QString told = serialAt(document, QStringLiteral("before.esn"));
    if (!told.isEmpty())
        serial = told;
    versionAfter = textAt(document, QStringLiteral("after.version.version"));
    retries = valueAt(document, QStringLiteral("messages.retries")).toInt();
    QStringList texts;
    const QJsonArray all = document.value(QStringLiteral("warnings")).toArray();
    for (const QJsonValue& text : all)
        texts << reportText(text.toString());
    warnings = texts.join(QLatin1Char(' '));
}

void BatchCount::add(const BatchUnit& unit)
{
    ++(unit.succeeded() ? succeeded : unit.isSkipped() ? skipped : failed);
}

BatchCount countOf(const QList<BatchUnit>& units)
{
    BatchCount count;
    for (const BatchUnit& unit : units)
        count.add(unit);
    return count;
}

const QStringList& batchFields()
{
    static const QStringList names = {
        QStringLiteral("port"),          QStringLiteral("serial"),       QStringLiteral("identity"),
        QStringLiteral("versionBefore"), QStringLiteral("versionAfter"), QStringLiteral("outcome"),
        QStringLiteral("reason"),        QStringLiteral("durationMs"),   QStringLiteral("retries"),
        QStringLiteral("warnings"),      QStringLiteral("trace")};
    return names;
}

QJsonObject batchObject(const BatchUnit& unit)
{
    return {{"port", unit.port},
            {"serial", unit.serial},
            {"identity", unit.identity},
            {"versionBefore", unit.versionBefore},
            {"versionAfter", unit.versionAfter},
            {"outcome", unit.outcome},
            {"reason", unit.reason},
            {"durationMs", double(unit.durationMs)},
            {"retries", unit.retries},
            {"warnings", unit.warnings},
            {"trace", unit.trace}};
}

QString batchText(const BatchUnit& unit, const QString& field)
{
    const QJsonValue value = batchObject(unit).value(field);
    return value.isDouble() ? QString::number(qint64(value.toDouble())) : value.toString();
}

} // namespace hx::host
