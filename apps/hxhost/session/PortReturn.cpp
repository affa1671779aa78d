#include "apps/hxhost/session/PortReturn.h"

#include "ports/PortMemory.h"
#include "ports/device/DevicePort.h"

#include <algorithm>
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

bool isServed(const QString& backend)
{
    const QList<MidiBackend> backends = listMidiBackends();
    return std::any_of(backends.begin(), backends.end(), [&backend](const MidiBackend& one) {
        return one.name == backend && one.unavailable.isEmpty();
    });
}

} // namespace

std::unique_ptr<MidiPort> keepPort(CommandContext& context, const ConnectionOptions& options,
                                   std::unique_ptr<MidiPort> port, const PortAddress& address,
                                   const QList<MidiBackend>& present)
{
    const PortMemory memory(address, present);
    const Pace pace = options.pace;
    const auto reopen = [memory, pace]() -> Result<std::unique_ptr<MidiPort>> {
        const Result<PortAddress> found = memory.find(listMidiBackends());
        if (!found)
            return found.problem();
        return RtMidiPort::open(*found, pace);
    };
    const QString backend = address.backend;
    return kept(options, std::move(port),
                {reopen, [backend] { return isServed(backend); }, tellOf(context)});
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
