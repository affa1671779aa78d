// hxhost ports: the MIDI ports of this machine, and which of them seem to be the product's.
#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/commands/Commands.h"
#include "apps/hxhost/commands/Readings.h"
#include "apps/hxhost/session/PluginPlace.h"

#include "host/base/HexText.h"
#include "ports/AnsweringPort.h"
#include "ports/device/DeviceList.h"
#include "ports/device/DevicePort.h"

namespace hx::host {

namespace {

struct PortsOptions {
    PluginOptions plugin;
    bool probe = false;
};

QJsonArray portRows(const QList<MidiBackend>& backends, const QString& productPortName)
{
    QJsonArray rows;
    for (const MidiBackend& backend : backends) {
        const auto add = [&](const QString& port, const char* direction) {
            rows << QJsonObject{{"direction", QString::fromLatin1(direction)},
                                {"name", backend.name + QLatin1Char(':') + port},
                                {"product", fitsProductPort(port, productPortName)}};
        };
        for (const QString& port : backend.outputs)
            add(port, "output");
        for (const QString& port : backend.inputs)
            add(port, "input");
    }
    return rows;
}

bool isOfDevices(const MidiBackend& backend)
{
    return backend.name == QLatin1String("device");
}

QList<MidiBackend> allBackends()
{
    return listMidiBackends() << listRawMidiDevices();
}

Result<std::unique_ptr<MidiPort>> openProbed(const PortAddress& address)
{
    return address.backend == QLatin1String("device")
               ? DevicePort::open({address.output, QString()}, Pace())
               : RtMidiPort::open(address, Pace());
}

void addBackends(CommandContext& context, const QList<MidiBackend>& backends)
{
    QJsonArray rows;
    for (const MidiBackend& backend : backends) {
        rows << QJsonObject{{"name", backend.name},
                            {"usable", backend.unavailable.isEmpty()},
                            {"reason", backend.unavailable}};
        if (!backend.unavailable.isEmpty() && !isOfDevices(backend))
            context.console.note(
                QStringLiteral("%1 cannot be used: %2").arg(backend.name, backend.unavailable));
    }
    context.report.addHidden(QStringLiteral("backends"), rows);
}

// What answered to the identity request, in words.
QString answerText(const IdentityReading& identity, DeviceInterface& device, bool isServed)
{
    if (!identity.isTold())
        return readingStateText(identity.state);
    const QString name = isServed ? device.productName() : QStringLiteral("another product");
    return QStringLiteral("%1, %2, version %3")
        .arg(name, identifierText(identity.fidpid), identity.version);
}

QJsonObject probed(const PortSelection& selection, const QString& name, DeviceInterface& device)
{
    const Result<AnsweringPort> opened = openAnswering(selection, device, openProbed);
    if (!opened)
        return {{"name", name}, {"served", false}, {"answer", opened.problem().what}};
    PortBus bus(*opened->port);
    ProductReader reader(device, bus);
    const IdentityReading identity = reader.identity();
    const bool isServed = identity.good() && reader.isServed(identity);
    return {
        {"name", name}, {"served", isServed}, {"answer", answerText(identity, device, isServed)}};
}

QJsonArray probeRows(const QList<MidiBackend>& backends, DeviceInterface& device)
{
    QJsonArray rows;
    for (const MidiBackend& backend : backends) {
        for (const QString& output : backend.outputs) {
            const QString name = backend.name + QLatin1Char(':') + output;
            const Result<PortSelection> selection = selectPort(backends, name, QString());
            if (selection)
                rows << probed(*selection, name, device);
            else
                rows << QJsonObject{
                    {"name", name}, {"served", false}, {"answer", selection.problem().what}};
        }
    }
    return rows;
}

std::unique_ptr<LoadedPlugin> listPorts(CommandContext& context, const PluginOptions& options,
                                        const QList<MidiBackend>& backends)
{
    std::unique_ptr<LoadedPlugin> plugin = loadChosenPlugin(context, options);
    if (!plugin)
        return nullptr;
    addBackends(context, backends);
    const QJsonArray rows = portRows(backends, plugin->device().productPortName());
    context.report.addTable(
        QStringLiteral("ports"),
        {QStringLiteral("direction"), QStringLiteral("product"), QStringLiteral("name")}, rows);
    if (rows.isEmpty())
        context.console.note(QStringLiteral("There are no MIDI ports. Connect an interface, or try "
                                            "'--port simulator'."));
    return plugin;
}

void probePorts(CommandContext& context, const PortsOptions& options)
{
    const QList<MidiBackend> backends = allBackends();
    const std::unique_ptr<LoadedPlugin> plugin = listPorts(context, options.plugin, backends);
    if (plugin && options.probe)
        context.report.addTable(
            QStringLiteral("probe"),
            {QStringLiteral("served"), QStringLiteral("answer"), QStringLiteral("name")},
            probeRows(backends, plugin->device()));
}

} // namespace

void reportPorts(CommandContext& context, const PluginOptions& options)
{
    listPorts(context, options, allBackends());
}

void addPortsCommand(CommandLine& line)
{
    auto options = std::make_shared<PortsOptions>();
    const Command command =
        line.add("ports", "List MIDI ports and mark those that fit the product");
    command.addFlag("--probe", options->probe, "Ask on each output which product is there");
    addPluginOptions(command, options->plugin);
    line.setRun(command, [options](CommandContext& context) { probePorts(context, *options); });
}

} // namespace hx::host
