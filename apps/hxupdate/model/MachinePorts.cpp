#include "apps/hxupdate/model/MachinePorts.h"

#include "ports/PortSelector.h"

namespace hxupdate {

QStringList MachinePorts::list()
{
    QStringList names;
    for (const hx::MidiBackend& backend : hx::listMidiBackends()) {
        for (const QString& output : backend.outputs)
            names << backend.name + QLatin1Char(':') + output;
    }
    return names;
}

std::unique_ptr<hx::MidiPort> MachinePorts::open(const QString& port, QString* error)
{
    const hx::PortSelection selection = hx::selectPort(hx::listMidiBackends(), port, QString());
    if (!selection.address) {
        *error = selection.what;
        return nullptr;
    }
    return hx::RtMidiPort::open(*selection.address, hx::Pace(), error);
}

} // namespace hxupdate
