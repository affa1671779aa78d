// hxhost inspect: what a plugin says of itself, without any product.
#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/commands/Commands.h"
#include "apps/hxhost/commands/Readings.h"
#include "apps/hxhost/session/PluginPlace.h"

#include "host/base/HexText.h"
#include "host/product/MessageNames.h"

namespace hx::host {

namespace {

// Qt's version as plugin metadata carries it: 0x050F00 is 5.15.0.
QString qtVersionText(int version)
{
    return QStringLiteral("%1.%2.%3")
        .arg(version >> 16)
        .arg(version >> 8 & 0xFF)
        .arg(version & 0xFF);
}

void addMetaData(Report& report, const LoadedPlugin& plugin)
{
    const QJsonObject metaData = plugin.metaData();
    report.add(QStringLiteral("plugin.file"), plugin.filePath());
    report.add(QStringLiteral("plugin.interfaceId"), plugin.interfaceId());
    report.add(QStringLiteral("plugin.className"), plugin.className());
    report.add(QStringLiteral("plugin.keys"), QJsonArray::fromStringList(plugin.keys()));
    report.add(QStringLiteral("plugin.qtVersion"),
               qtVersionText(metaData.value(QStringLiteral("version")).toInt()));
    report.add(QStringLiteral("plugin.debugBuild"),
               metaData.value(QStringLiteral("debug")).toBool());
}

void addNames(Report& report, DeviceInterface& device)
{
    report.add(QStringLiteral("device.productName"), device.productName());
    report.add(QStringLiteral("device.nickName"), device.nickName());
    report.add(QStringLiteral("device.classVersion"), device.classVersion());
    report.add(QStringLiteral("device.portName"), device.productPortName());
    report.add(QStringLiteral("device.inPortName"), device.productInPortName());
    report.add(QStringLiteral("device.outPortName"), device.productOutPortName());
}

void addIdentifiers(Report& report, DeviceInterface& device)
{
    report.add(QStringLiteral("device.identifier"), identifierText(device.fidpid()));
    report.add(QStringLiteral("device.rawIdentifier"), identifierText(device.rawFidpid()));
    report.add(QStringLiteral("device.isBootcode"), device.isBootcode());
    report.add(QStringLiteral("device.hasBootcode"), device.hasBootcode());
    const QMap<unsigned, QString> names = device.getFidPidNameMap();
    QJsonArray served;
    const QVector<unsigned> identifiers = device.getGenderList();
    for (const unsigned identifier : identifiers)
        served << QJsonObject{{"identifier", identifierText(identifier)},
                              {"name", names.value(identifier)}};
    report.addTable(QStringLiteral("device.serves"),
                    {QStringLiteral("identifier"), QStringLiteral("name")}, served);
}

QJsonObject dictionaryRow(const QString& key, const QVariant& value)
{
    const bool isNumber = value.userType() == QMetaType::Int;
    return {{"key", key},
            {"type", isNumber ? QStringLiteral("integer") : QStringLiteral("text")},
            {"value", isNumber ? QJsonValue(value.toInt()) : QJsonValue(value.toString())}};
}

void addDictionary(Report& report, const DeviceInterface& device)
{
    QJsonArray rows;
    const QStringList keys = knownKeys();
    for (const QString& key : keys) {
        const QVariant value = device.lookup(key);
        if (value.isValid())
            rows << dictionaryRow(key, value);
    }
    report.addTable(QStringLiteral("dictionary"),
                    {QStringLiteral("key"), QStringLiteral("type"), QStringLiteral("value")}, rows);
}

} // namespace

void reportPlugin(CommandContext& context, const PluginOptions& options)
{
    const std::unique_ptr<LoadedPlugin> plugin = loadChosenPlugin(context, options);
    if (!plugin)
        return;
    addMetaData(context.report, *plugin);
    addNames(context.report, plugin->device());
    addIdentifiers(context.report, plugin->device());
    addDictionary(context.report, plugin->device());
    const QString missing = describeProduct(plugin->device()).missingProofText();
    if (!missing.isEmpty())
        context.warn(missing);
}

void addInspectCommand(CommandLine& line)
{
    auto options = std::make_shared<PluginOptions>();
    const Command command =
        line.add("inspect", "Load the plugin and show its metadata, names and dictionary");
    addPluginOptions(command, *options);
    line.setRun(command, [options](CommandContext& context) { reportPlugin(context, *options); });
}

} // namespace hx::host
