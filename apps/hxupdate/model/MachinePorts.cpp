#include "apps/hxupdate/model/MachinePorts.h"

#include <utility>

namespace hxupdate {

MidiSystem midiSystemOfMachine()
{
    const auto open = [](const hx::PortAddress& address) {
        return hx::RtMidiPort::open(address, hx::Pace());
    };
    return {hx::listMidiBackends, open};
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

hx::Result<std::unique_ptr<hx::MidiPort>> MachinePorts::open(const QString& port,
                                                             DeviceInterface& device)
{
    const auto selection = hx::selectPort(m_system.list(), port, QString());
    if (!selection)
        return selection.problem();
    hx::Result<hx::AnsweringPort> opened = hx::openAnswering(*selection, device, m_system.open);
    if (!opened)
        return opened.problem();
    return std::move(opened->port);
}

} // namespace hxupdate
