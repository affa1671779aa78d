#include "apps/hxupdate/model/MachinePorts.h"

#include <utility>

namespace hxupdate {

MidiSystem midiSystemOfMachine()
{
    const auto open = [](const hx::PortAddress& address) {
        return hx::RtMidiPort::open(address, hx::Pace());
    };
    return {hx::listMidiBackends, open, std::make_shared<hx::SteadyClock>()};
}

MachinePorts::MachinePorts(MidiSystem system) : m_system(std::move(system)) {}

QStringList MachinePorts::list()
{
    QStringList names;
    for (const hx::MidiBackend& backend : m_system.list()) {
        for (const QString& output : backend.outputs)
            names << backend.name + QLatin1Char(':') + output;
    }
    return names;
}

hx::Result<std::unique_ptr<hx::MidiPort>>
MachinePorts::open(const QString& port, DeviceInterface& device, const PortMoved& moved)
{
    const QList<hx::MidiBackend> present = m_system.list();
    const auto selection = hx::selectPort(present, port, QString());
    if (!selection)
        return selection.problem();
    hx::Result<hx::AnsweringPort> opened = hx::openAnswering(*selection, device, m_system.open);
    if (!opened)
        return opened.problem();
    if (moved == nullptr)
        return std::move(opened->port);
    const hx::PortAddress& chosen = selection->address;
    const hx::PortAddress address = {chosen.backend, chosen.output, opened->input};
    hx::ReturningPort::Ways ways = hx::waysBackTo(address, present, m_system.list, m_system.open);
    ways.tell = [moved](hx::BusEventKind kind, const QString& text) {
        moved(kind == hx::BusEventKind::PortBack, text);
    };
    return std::unique_ptr<hx::MidiPort>(
        std::make_unique<hx::ReturningPort>(std::move(opened->port), *m_system.clock, ways));
}

} // namespace hxupdate
