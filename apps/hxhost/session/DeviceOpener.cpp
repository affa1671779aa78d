#include "apps/hxhost/session/DeviceOpener.h"

#include "apps/hxhost/session/PortReturn.h"

#include "host/base/FileName.h"
#include "ports/device/DevicePort.h"

#include <csignal>

namespace hx::host {

namespace {

QString portOf(const ConnectionOptions& options)
{
    return devicePath(fileNameText(options.port));
}

// "device:" alone.
bool isNameless(const QString& path)
{
    return path.isEmpty() && !path.isNull();
}

std::unique_ptr<MidiPort> open(CommandContext& context, const DeviceAddress& address,
                               const Pace& pace)
{
    if (isNameless(address.output) || isNameless(address.input)) {
        context.fail(ExitCode::NoPort, QStringLiteral("the device has no name"),
                     QStringLiteral("device:FILE"),
                     QStringLiteral("give the name of a file; 'hxhost ports' lists raw MIDI "
                                    "devices"));
        return nullptr;
    }
    std::signal(SIGPIPE, SIG_IGN); // a FIFO that nobody reads any more is an error like others
    Result<std::unique_ptr<MidiPort>> port = DevicePort::open(address, pace);
    if (port)
        return std::move(*port);
    context.report.fail(port.problem());
    return nullptr;
}

} // namespace

bool isDevice(const ConnectionOptions& options)
{
    return !portOf(options).isNull() || !devicePath(fileNameText(options.inPort)).isNull();
}

std::unique_ptr<MidiPort> openDevice(CommandContext& context, const ConnectionOptions& options)
{
    const DeviceAddress address = {portOf(options), devicePath(fileNameText(options.inPort))};
    const bool isMixed =
        address.output.isNull() || (address.input.isNull() && !options.inPort.empty());
    if (!isMixed) {
        std::unique_ptr<MidiPort> port = open(context, address, options.pace);
        return port ? keepDevice(context, options, std::move(port)) : nullptr;
    }
    context.fail(ExitCode::Usage,
                 QStringLiteral("--port \"%1\" and --in-port \"%2\" are not both devices")
                     .arg(fileNameText(options.port), fileNameText(options.inPort)),
                 QStringLiteral("a device for both, or for neither"),
                 QStringLiteral("give both as device:FILE, or leave --in-port out"));
    return nullptr;
}

std::unique_ptr<MidiPort> openDeviceInput(CommandContext& context, const ConnectionOptions& options)
{
    return open(context, {QString(), portOf(options)}, options.pace);
}

} // namespace hx::host
