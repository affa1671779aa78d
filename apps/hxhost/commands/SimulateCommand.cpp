// hxhost simulate: the simulated product on a virtual MIDI port, for any program to talk to.
#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/commands/Commands.h"
#include "apps/hxhost/session/InterruptFlag.h"
#include "apps/hxhost/session/PluginPlace.h"
#include "apps/hxhost/session/ProductSimulation.h"
#include "apps/hxhost/session/ServedTraffic.h"

#include "host/base/FileName.h"
#include "ports/PortList.h"
#include "ports/ProductServer.h"
#include "ports/ProductStateFile.h"
#include "ports/RtMidiPort.h"
#include "ports/device/PseudoTerminalPort.h"

namespace hx::host {

namespace {

// How soon an interrupt ends the service.
constexpr Microseconds serveInterval = 50 * microsecondsPerMillisecond;

struct SimulateOptions {
    PluginOptions plugin;
    std::string name;    // empty: the one that the plugin gives
    std::string backend; // empty: the first that can be used
    bool device = false; // a pseudo terminal instead of a port of a backend
    std::string link;    // to it; empty: none
    std::string state;   // empty: a fresh product, forgotten afterwards
    double seconds = 0;  // 0: until it is interrupted
    SimulationOptions simulation;
    Pace pace = {0, 0};
};

// Empty for a backend of this machine's MIDI library, usable or not, else what is wrong with it.
std::string isBackend(const std::string& name)
{
    QStringList names;
    const QList<MidiBackend> backends = listMidiBackends();
    for (const MidiBackend& backend : backends)
        names << backend.name;
    if (names.contains(QString::fromStdString(name)))
        return std::string();
    return '"' + name +
           "\" is none of the backends here: " + names.join(QLatin1String(", ")).toStdString();
}

// The backend that is named, or the first that can be used.
QString chosenBackend(CommandContext& context, const SimulateOptions& options)
{
    const QString wanted = QString::fromStdString(options.backend);
    QStringList reasons;
    const QList<MidiBackend> backends = listMidiBackends();
    for (const MidiBackend& backend : backends) {
        if (!wanted.isEmpty() && backend.name != wanted)
            continue;
        if (backend.unavailable.isEmpty())
            return backend.name;
        reasons << backend.name + QLatin1String(": ") + backend.unavailable;
    }
    context.fail(ExitCode::NoPort,
                 QStringLiteral("no virtual port can be made: ") +
                     reasons.join(QLatin1String("; ")),
                 QStringLiteral("a running ALSA sequencer, JACK server or CoreMIDI"),
                 QStringLiteral("start one, such as 'jackd -d dummy', or use '--port simulator' "
                                "with the other commands"));
    return QString();
}

void failState(CommandContext& context, const QString& path, const QString& error)
{
    context.fail(ExitCode::FileError,
                 QStringLiteral("the state file \"%1\" cannot be used: %2").arg(path, error),
                 QStringLiteral("a file written by this program, or a new one in a folder "
                                "that may be written to"),
                 QStringLiteral("give another name with --state"));
}

void addResult(Report& report, const sim::FaultyProduct& product, int replies)
{
    report.add(QStringLiteral("replies"), replies);
    report.add(QStringLiteral("product.name"), product.product().identity().name);
    report.add(QStringLiteral("product.codeValid"), product.product().isCodeValid());
    report.add(QStringLiteral("product.codeBytes"), product.product().codeBytes().size());
    report.add(QStringLiteral("product.unplugged"), product.isGone());
}

void serve(CommandContext& context, const SimulateOptions& options, MidiPort& port,
           sim::FaultyProduct& product, ProductStateFile* state)
{
    const InterruptFlag interrupt;
    ServedTraffic traffic(context.recorder, port.clock());
    ProductServer server(port, product);
    server.setWatch({[&](const MidiChunk& chunk) { traffic.heard(chunk); },
                     [&] { return state == nullptr || bool(state->keep(product.product())); },
                     [&](const QByteArray& bytes) { traffic.answered(bytes); }});
    const Microseconds start = port.clock().now();
    const auto isOver = [&] {
        return options.seconds > 0 && double(port.clock().now() - start) >= options.seconds * 1e6;
    };
    bool serving = true;
    while (serving && !*interrupt.flag() && !isOver()) {
        serving = server.serve(serveInterval);
        traffic.silence();
    }
    traffic.end();
    addResult(context.report, product, traffic.replies());
    if (!server.errorText.isEmpty())
        context.fail(ExitCode::NoPort, server.errorText, QStringLiteral("a port that stays open"),
                     QStringLiteral("start the MIDI server again, then this command"));
}

std::unique_ptr<MidiPort> openVirtual(CommandContext& context, const SimulateOptions& options,
                                      const DeviceInterface& device)
{
    const QString backend = chosenBackend(context, options);
    if (backend.isEmpty())
        return nullptr;
    const QString name =
        options.name.empty() ? device.productPortName() : QString::fromStdString(options.name);
    Result<std::unique_ptr<MidiPort>> port = RtMidiPort::openVirtual(backend, name, options.pace);
    if (port)
        return std::move(*port);
    context.fail(
        ExitCode::NoPort,
        QStringLiteral("no virtual port can be made on %1: %2").arg(backend, port.problem().what),
        QStringLiteral("a running MIDI server of that kind"),
        QStringLiteral("start it, or choose another with --backend; 'hxhost ports' "
                       "shows what can be used"));
    return nullptr;
}

std::unique_ptr<MidiPort> openTerminal(CommandContext& context, const SimulateOptions& options)
{
    Result<std::unique_ptr<MidiPort>> port =
        PseudoTerminalPort::open(fileNameText(options.link), options.pace);
    if (port)
        return std::move(*port);
    context.report.fail(port.problem());
    return nullptr;
}

// False, with the problem in the report, when a link is named and no device is asked for.
bool isLinkWanted(CommandContext& context, const SimulateOptions& options)
{
    if (options.device || options.link.empty())
        return true;
    context.fail(ExitCode::Usage,
                 QStringLiteral("the argument \"%1\" is a link to a device, but none is asked for")
                     .arg(fileNameText(options.link)),
                 QStringLiteral("LINK together with --device"),
                 QStringLiteral("give --device too, or leave the argument out"));
    return false;
}

void simulate(CommandContext& context, const SimulateOptions& options)
{
    if (!isLinkWanted(context, options))
        return;
    const std::unique_ptr<LoadedPlugin> plugin = loadChosenPlugin(context, options.plugin);
    if (!plugin)
        return;
    std::optional<sim::FaultyProduct> product =
        simulateProduct(context, plugin->device(), options.simulation);
    if (!product)
        return;
    const QString path = fileNameText(options.state);
    std::unique_ptr<ProductStateFile> state;
    if (!path.isEmpty()) {
        auto opened = ProductStateFile::open(path, product->product());
        if (!opened)
            return failState(context, path, opened.problem().what);
        state = std::move(*opened);
    }
    const std::unique_ptr<MidiPort> port = options.device
                                               ? openTerminal(context, options)
                                               : openVirtual(context, options, plugin->device());
    if (!port)
        return;
    context.report.add(QStringLiteral("port"), port->name());
    context.console.note(
        QStringLiteral("The product is on %1. Ctrl-C unplugs it.").arg(port->name()));
    serve(context, options, *port, *product, state.get());
    const Result<> closed = state ? state->close(product->product()) : Result<>();
    if (!closed)
        failStoring(context, path, closed.problem().what);
}

} // namespace

void addSimulateCommand(CommandLine& line)
{
    auto options = std::make_shared<SimulateOptions>();
    const Command command =
        line.add("simulate", "Put a simulated product on a virtual MIDI port until Ctrl-C");
    command.addOption("LINK", options->link,
                      "With --device: a symbolic link to make to the device");
    const Option device =
        command.addFlag("--device", options->device,
                        "Make a device instead of a MIDI port; other commands open it with "
                        "--port device:FILE");
    command
        .addOption("--name", options->name,
                   "Name of the port; default: the name that the plugin gives")
        .valueName("NAME")
        .excludes(device);
    command
        .addOption("--backend", options->backend,
                   "Kind of port; default: the first that can be used")
        .valueName("alsa|jack|core")
        .excludes(device)
        .check(isBackend);
    command.addOption("--state", options->state, "File that keeps the product's memory")
        .valueName("FILE");
    addSecondsOption(command, options->seconds);
    addPluginOptions(command, options->plugin);
    addPaceOptions(command, options->pace);
    addSimulationOptions(command, options->simulation);
    command.explain("Faults:\n" + sim::faultHelp().toStdString());
    line.setRun(command, [options](CommandContext& context) { simulate(context, *options); });
}

} // namespace hx::host
