#include "apps/hxhost/session/PortReturn.h"

#include "ports/PortMemory.h"
#include "ports/WaysBack.h"
#include "ports/device/DevicePort.h"

#include <functional>

namespace hx::host {

namespace {

using Tell = std::function<void(BusEventKind, const QString&)>;

std::unique_ptr<MidiPort> kept(const ConnectionOptions& options, std::unique_ptr<MidiPort> port,
                               const ReturningPort::Ways& ways)
{
    static SteadyClock clock; // the same moments as those of the ports' own clocks
    const unsigned factor = options.slowHost ? slowHostPatience.factor : 1;
    return std::make_unique<ReturningPort>(std::move(port), clock, ways, returnTime * factor);
}

Tell tellOf(CommandContext& context)
{
    return [&context](BusEventKind kind, const QString& text) {
        context.console.note(text);
        context.recorder.note(kind, text);
    };
}

} // namespace

std::unique_ptr<MidiPort> keepPort(CommandContext& context, const ConnectionOptions& options,
                                   std::unique_ptr<MidiPort> port, const PortAddress& address,
                                   const QList<MidiBackend>& present)
{
    const auto open = [pace = options.pace](const PortAddress& found) {
        return RtMidiPort::open(found, pace);
    };
    ReturningPort::Ways ways = waysBackTo(address, present, listMidiBackends, open);
    ways.tell = tellOf(context);
    return kept(options, std::move(port), ways);
}

std::unique_ptr<MidiPort> keepDevice(CommandContext& context, const ConnectionOptions& options,
                                     std::unique_ptr<MidiPort> port)
{
    const PortIdentity identity = port->identity();
    if (!isCertain(identity) || !options.inPort.empty())
        return port;
    const Pace pace = options.pace;
    const auto reopen = [identity, pace]() -> Result<std::unique_ptr<MidiPort>> {
        const Result<QString> found = findDevice(identity);
        if (!found)
            return found.problem();
        return DevicePort::open({*found, QString()}, pace);
    };
    return kept(options, std::move(port), {reopen, [] { return true; }, tellOf(context)});
}

} // namespace hx::host
