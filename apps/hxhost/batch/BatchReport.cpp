#include "apps/hxhost/batch/BatchReport.h"

#include "host/base/WholeFile.h"

#include <QJsonDocument>
#include <QSysInfo>
#include <QXmlStreamWriter>

namespace hx::host {

namespace {

const QString xmlEnding = QStringLiteral(".xml");
const QString csvEnding = QStringLiteral(".csv");
const QString jsonLinesEnding = QStringLiteral(".jsonl");

QString number(int value)
{
    return QString::number(value);
}

QString secondsText(qint64 milliseconds)
{
    return QString::number(double(milliseconds) / 1000, 'f', 3);
}

void writeProperties(QXmlStreamWriter& xml, const BatchUnit& unit)
{
    xml.writeStartElement(QStringLiteral("properties"));
    for (const QString& field : batchFields()) {
        xml.writeEmptyElement(QStringLiteral("property"));
        xml.writeAttribute(QStringLiteral("name"), field);
        xml.writeAttribute(QStringLiteral("value"), batchText(unit, field));
    }
    xml.writeEndElement();
}

void writeVerdict(QXmlStreamWriter& xml, const BatchUnit& unit)
{
    if (unit.succeeded())
        return;
    if (unit.isSkipped())
        return xml.writeEmptyElement(QStringLiteral("skipped"));
    xml.writeStartElement(unit.isBroken() ? QStringLiteral("error") : QStringLiteral("failure"));
    xml.writeAttribute(QStringLiteral("message"), unit.reason);
    xml.writeAttribute(QStringLiteral("type"), unit.outcome);
    xml.writeEndElement();
}

void writeCase(QXmlStreamWriter& xml, const BatchUnit& unit)
{
    xml.writeStartElement(QStringLiteral("testcase"));
    xml.writeAttribute(QStringLiteral("name"), unit.serial.isEmpty() ? unit.port : unit.serial);
    xml.writeAttribute(QStringLiteral("classname"), QStringLiteral("hxhost.batch"));
    xml.writeAttribute(QStringLiteral("time"), secondsText(unit.durationMs));
    writeVerdict(xml, unit);
    xml.writeEndElement();
}

void writeSuite(QXmlStreamWriter& xml, const BatchRecord& record, int index)
{
    const BatchUnit& unit = record.units.at(index);
    const bool isFailure = !unit.succeeded() && !unit.isSkipped() && !unit.isBroken();
    xml.writeStartElement(QStringLiteral("testsuite"));
    xml.writeAttribute(QStringLiteral("name"), unit.port);
    xml.writeAttribute(QStringLiteral("package"), QStringLiteral("hxhost"));
    xml.writeAttribute(QStringLiteral("id"), number(index));
    xml.writeAttribute(QStringLiteral("timestamp"),
                       record.started.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")));
    xml.writeAttribute(QStringLiteral("hostname"), reportText(QSysInfo::machineHostName()));
    xml.writeAttribute(QStringLiteral("tests"), number(1));
    xml.writeAttribute(QStringLiteral("failures"), number(isFailure ? 1 : 0));
    xml.writeAttribute(QStringLiteral("errors"), number(unit.isBroken() ? 1 : 0));
    xml.writeAttribute(QStringLiteral("skipped"), number(unit.isSkipped() ? 1 : 0));
    xml.writeAttribute(QStringLiteral("time"), secondsText(unit.durationMs));
    writeProperties(xml, unit);
    writeCase(xml, unit);
    xml.writeTextElement(QStringLiteral("system-out"), QString());
    xml.writeTextElement(QStringLiteral("system-err"), QString());
    xml.writeEndElement();
}

// RFC 4180: in quotes where it holds one, a comma or the end of a line.
QByteArray csvCell(const QString& text)
{
    QByteArray cell = text.toUtf8();
    const bool isPlain =
        !cell.contains('"') && !cell.contains(',') && !cell.contains('\r') && !cell.contains('\n');
    return isPlain ? cell : '"' + cell.replace("\"", "\"\"") + '"';
}

QByteArray csvLine(const QStringList& cells)
{
    QByteArray line;
    for (const QString& cell : cells)
        line += (line.isEmpty() ? QByteArray() : QByteArray(",")) + csvCell(cell);
    return line + "\r\n";
}

} // namespace

std::optional<BatchReportForm> batchReportForm(const QString& name)
{
    if (name.endsWith(xmlEnding))
        return BatchReportForm::JUnit;
    if (name.endsWith(csvEnding))
        return BatchReportForm::Csv;
    if (name.endsWith(jsonLinesEnding))
        return BatchReportForm::JsonLines;
    return std::nullopt;
}

QByteArray junitText(const BatchRecord& record)
{
    QByteArray text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("testsuites"));
    for (int i = 0; i < record.units.size(); ++i)
        writeSuite(xml, record, i);
    xml.writeEndElement();
    xml.writeEndDocument();
    return text;
}

QByteArray csvText(const BatchRecord& record)
{
    QByteArray text = csvLine(batchFields());
    for (const BatchUnit& unit : record.units) {
        QStringList cells;
        for (const QString& field : batchFields())
            cells << batchText(unit, field);
        text += csvLine(cells);
    }
    return text;
}

QByteArray jsonLinesText(const BatchRecord& record)
{
    QByteArray text;
    for (const BatchUnit& unit : record.units)
        text += QJsonDocument(batchObject(unit)).toJson(QJsonDocument::Compact) + '\n';
    return text;
}

Result<> writeBatchReport(const QString& name, const BatchRecord& record)
{
    switch (batchReportForm(name).value_or(BatchReportForm::JsonLines)) {
    case BatchReportForm::JUnit:
        return writeWholeFile(name, junitText(record));
    case BatchReportForm::Csv:
        return writeWholeFile(name, csvText(record));
    case BatchReportForm::JsonLines:
        break;
    }
    return writeWholeFile(name, jsonLinesText(record));
}

} // namespace hx::host
