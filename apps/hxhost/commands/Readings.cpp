#include "apps/hxhost/commands/Readings.h"

#include "apps/hxhost/commands/Sentences.h"

#include "host/base/HexText.h"

namespace hx::host {

namespace {

QString member(const QString& name, const char* last)
{
    return name + QLatin1Char('.') + QLatin1String(last);
}

// True when there is a value to add.
bool addState(Report& report, const QString& name, const Reading& reading)
{
    if (reading.state == ReadingState::NotRead)
        return false;
    const QString state = readingStateText(reading.state);
    report.addHidden(member(name, "reason"), reading.reason);
    report.addHidden(member(name, "reply"), hexText(reading.raw.bytes));
    if (reading.good())
        report.addHidden(member(name, "state"), state);
    else
        report.add(member(name, "state"), state);
    return reading.good();
}

QString textOrNone(bool isNull, const QString& text)
{
    return isNull ? QStringLiteral("(none)") : text;
}

// The same checksum in replies that are not the same: the rest of a reply is the echoed command.
bool differOnlyInEcho(const ChecksumReading& stored, const ChecksumReading& calculated)
{
    return stored.good() && calculated.good() && stored.groups == calculated.groups &&
           stored.raw.bytes != calculated.raw.bytes;
}

} // namespace

void addReading(Report& report, const QString& name, const IdentityReading& reading)
{
    addState(report, name, reading);
    if (!reading.isTold())
        return;
    report.add(member(name, "identifier"), identifierText(reading.fidpid));
    report.add(member(name, "manufacturer"), hexText(reading.manufacturer));
    report.add(member(name, "version"), reading.version);
}

void addReading(Report& report, const QString& name, const GenderReading& reading)
{
    if (addState(report, name, reading))
        report.add(member(name, "identifier"), identifierText(reading.fidpid));
}

void addReading(Report& report, const QString& name, const VersionReading& reading)
{
    if (addState(report, name, reading))
        report.add(member(name, "version"), reading.version);
}

void addReading(Report& report, const QString& name, const ChecksumReading& reading)
{
    if (addState(report, name, reading))
        report.add(member(name, "bytes"), hexText(reading.groups));
}

void addReading(Report& report, const QString& name, const EsnReading& reading)
{
    if (!addState(report, name, reading))
        return;
    const QString number = QString::fromLatin1(reading.number.toHex().toUpper());
    const QString text = serialText(reading.number);
    if (text.isEmpty())
        return report.add(member(name, "number"), number);
    report.addHidden(member(name, "number"), number);
    report.add(member(name, "text"), text);
}

void addReading(Report& report, const QString& name, const CodeImageReading& reading)
{
    if (!addState(report, name, reading))
        return;
    report.add(member(name, "present"), reading.present);
    if (!reading.present)
        return;
    report.add(member(name, "version"), reading.version);
    report.add(member(name, "size"), double(reading.size));
    report.add(member(name, "responseFlag"), reading.responseFlag);
    report.add(member(name, "bankStatus"), reading.bankStatus);
}

void addPluginAnswers(Report& report, const PluginAnswers& answers, const ChecksumReading& stored,
                      const ChecksumReading& calculated)
{
    report.add(QStringLiteral("plugin.versionNumber"), answers.versionNumber);
    const bool noEsn = answers.esn.isNull();
    report.add(QStringLiteral("plugin.esn"), noEsn ? QJsonValue() : QJsonValue(answers.esn),
               textOrNone(noEsn, answers.esn));
    report.add(QStringLiteral("plugin.isCodeValid.fwu"), answers.fwuValid);
    report.add(QStringLiteral("plugin.isCodeValid.fwd"), answers.fwdValid);
    if (answers.fwuValid || !differOnlyInEcho(stored, calculated))
        return;
    report.add(QStringLiteral("plugin.isCodeValid.note"),
               QStringLiteral("the checksum bytes above agree, and they decide; their replies "
                              "differ in the command byte that they echo, so that a plugin which "
                              "compares that byte too answers false for intact code"));
}

bool requireGood(CommandContext& context, const Reading& reading, const QString& portName)
{
    if (!reading.good())
        context.report.fail(problemOf(reading, portName));
    return reading.good();
}

void failWrongProduct(CommandContext& context, const IdentityReading& identity,
                      DeviceInterface& device)
{
    context.fail(ExitCode::WrongProduct,
                 QStringLiteral("the product that answered has the identifier %1")
                     .arg(identifierText(identity.fidpid)),
                 QStringLiteral("%1 (%2), which this plugin serves")
                     .arg(identifierText(device.fidpid()), device.productName()),
                 QStringLiteral("choose the product's port with --port, or the plugin made for "
                                "this product with --plugin"));
}

} // namespace hx::host
