#include "apps/hxhost/session/PortOpener.h"

#include "apps/hxhost/session/DeviceOpener.h"
#include "apps/hxhost/session/PortReturn.h"
#include "apps/hxhost/session/ProductSimulation.h"

#include "host/base/FileName.h"
#include "host/base/HexText.h"
#include "ports/AnsweringPort.h"
#include "ports/PortSelector.h"
#include "ports/ReplayPort.h"
#include "ports/StatefulSimulatedPort.h"

#include <algorithm>
#include <csignal>

namespace hx::host {

namespace {

const QString simulatorName = QStringLiteral("simulator");
const QString simulatorPrefix = QStringLiteral("simulator:");
const QString replayPrefix = QStringLiteral("replay:");

using PortPointer = std::unique_ptr<MidiPort>;

void failStateFile(CommandContext& context, const QString& path, const QString& error)
{
    context.fail(ExitCode::FileError,
                 QStringLiteral("the state file \"%1\" cannot be used: %2").arg(path, error),
                 QStringLiteral("a file written by this program, or a new one in a folder "
                                "that may be written to"),
                 QStringLiteral("give another file name after 'simulator:'"));
}

PortPointer openStateful(CommandContext& context, const sim::FaultyProduct& product,
                         const QString& path, const Pace& pace)
{
    const auto onSaveError = [&context, path](const QString& text) {
        failStoring(context, path, text);
    };
    auto port = StatefulSimulatedPort::open(path, product, {pace, 0}, onSaveError);
    if (port)
        return std::move(*port);
    failStateFile(context, path, port.problem().what);
    return nullptr;
}

// The names that the plugin gives its product's ports, when the person gave none.
Result<PortSelection> select(const QList<MidiBackend>& present, const ConnectionOptions& options,
                             const DeviceInterface& device)
{
    const QString output = fileNameText(options.port);
    const QString input = fileNameText(options.inPort);
    if (output.isEmpty() && input.isEmpty())
        return selectProductPort(present, device.productOutPortName(), device.productInPortName());
    return selectPort(present, output.isEmpty() ? device.productOutPortName() : output, input);
}

AnsweringPort failOpening(CommandContext& context, const QString& error)
{
    context.fail(ExitCode::NoPort, QStringLiteral("the port cannot be opened: ") + error,
                 QStringLiteral("a port that no other program holds"),
                 QStringLiteral("close what uses it, or choose another from 'hxhost ports'"));
    return {};
}

// Without a port, with the problem in the report, when it cannot be opened.
AnsweringPort openSelected(CommandContext& context, const Result<PortSelection>& selection,
                           const ConnectionOptions& options, DeviceInterface& device)
{
    if (!selection) {
        context.report.fail(selection.problem());
        return {};
    }
    const auto open = [&options](const PortAddress& address) {
        return RtMidiPort::open(address, options.pace);
    };
    Result<AnsweringPort> opened =
        openAnswering(*selection, device, open, options.slowHost ? slowHostPatience : Patience());
    if (!opened)
        return failOpening(context, opened.problem().what);
    if (!selection->others.isEmpty())
        context.recorder.note(
            BusEventKind::Decided,
            QStringLiteral("of %1 inputs, answers come by %2")
                .arg(QString::number(selection->others.size() + 1), opened->input));
    return std::move(*opened);
}

QJsonArray differingBytes(const ReplayDivergence& divergence)
{
    QJsonArray rows;
    const auto longer = std::max(divergence.recorded.size(), divergence.sent.size());
    for (int i = 0; i < longer; ++i) {
        const QString recorded = hexText(divergence.recorded.mid(i, 1));
        const QString sent = hexText(divergence.sent.mid(i, 1));
        if (recorded != sent)
            rows << QJsonObject{{"byte", i}, {"recorded", recorded}, {"sent", sent}};
    }
    return rows;
}

void reportDivergence(CommandContext& context, const ReplayDivergence& divergence)
{
    Report& report = context.report;
    report.add(QStringLiteral("divergence.message"), divergence.message);
    report.add(QStringLiteral("divergence.line"), divergence.line);
    report.add(QStringLiteral("divergence.recorded"), hexText(divergence.recorded));
    report.add(QStringLiteral("divergence.sent"), hexText(divergence.sent));
    report.addTable(QStringLiteral("divergence.bytes"),
                    {QStringLiteral("byte"), QStringLiteral("recorded"), QStringLiteral("sent")},
                    differingBytes(divergence));
    context.replayProblem = Problem{
        ExitCode::ReplayDiverged, QStringLiteral("the replay diverged: ") + divergence.text(),
        QStringLiteral("the messages that the trace holds"),
        QStringLiteral("run the command, with the image, that the trace was made with")};
}

PortPointer openReplay(CommandContext& context, const QString& path, bool listensOnly)
{
    const Result<TraceEvents> trace = readTrace(path);
    if (!trace) {
        context.report.fail(trace.problem());
        return nullptr;
    }
    ReplayHandlers handlers;
    handlers.diverged = [&context](const ReplayDivergence& divergence) {
        reportDivergence(context, divergence);
    };
    handlers.interrupted = [] { std::raise(SIGINT); };
    return std::make_unique<ReplayPort>(path, listensOnly ? arrivalsOf(*trace) : *trace, handlers);
}

// The product that the plugin serves, in this program.
PortPointer openSimulated(CommandContext& context, const ConnectionOptions& options,
                          DeviceInterface& device)
{
    const std::optional<sim::FaultyProduct> product =
        simulateProduct(context, device, options.simulation);
    if (!product)
        return nullptr;
    const QString name = fileNameText(options.port);
    if (name.startsWith(simulatorPrefix))
        return openStateful(context, *product, name.mid(simulatorPrefix.size()), options.pace);
    return std::make_unique<SimulatedPort>(*product, SimulatedPortOptions{options.pace, 0});
}

PortPointer openMadeUp(CommandContext& context, const ConnectionOptions& options,
                       DeviceInterface& device, bool listensOnly)
{
    if (isReplayedPort(fileNameText(options.port)))
        return openReplay(context, fileNameText(options.port).mid(replayPrefix.size()),
                          listensOnly);
    return openSimulated(context, options, device);
}

} // namespace

bool isMadeUpPort(const QString& name)
{
    return isSimulatedPort(name) || isReplayedPort(name);
}

bool isSimulatedPort(const QString& name)
{
    return name == simulatorName || name.startsWith(simulatorPrefix);
}

bool isReplayedPort(const QString& name)
{
    return name.startsWith(replayPrefix);
}

PortPointer openPort(CommandContext& context, const ConnectionOptions& options,
                     DeviceInterface& device)
{
    if (isMadeUpPort(fileNameText(options.port)))
        return openMadeUp(context, options, device, false);
    if (isDevice(options))
        return openDevice(context, options);
    const QList<MidiBackend> present = listMidiBackends();
    const Result<PortSelection> selection = select(present, options, device);
    AnsweringPort opened = openSelected(context, selection, options, device);
    if (!opened.port)
        return nullptr;
    const PortAddress address = {selection->address.backend, selection->address.output,
                                 opened.input};
    return keepPort(context, options, std::move(opened.port), address, present);
}

PortPointer openInput(CommandContext& context, const ConnectionOptions& options,
                      DeviceInterface& device)
{
    const QString name = fileNameText(options.port);
    if (isMadeUpPort(name))
        return openMadeUp(context, options, device, true);
    if (isDevice(options))
        return openDeviceInput(context, options);
    const QString wanted = name.isEmpty() ? device.productInPortName() : name;
    return openSelected(context, selectInput(listMidiBackends(), wanted), options, device).port;
}

} // namespace hx::host
