#include "ports/device/DeviceList.h"

#include <QDir>

namespace hx {

QStringList rawMidiDevices(const QString& folder)
{
    const QDir devices(folder);
    QStringList paths;
    const QStringList names =
        devices.entryList({QStringLiteral("midiC*D*")}, QDir::System | QDir::Files, QDir::Name);
    for (const QString& name : names)
        paths << devices.filePath(name);
    return paths;
}

MidiBackend listRawMidiDevices(const QString& folder)
{
    MidiBackend backend;
    backend.name = QStringLiteral("device");
    backend.title = QStringLiteral("Raw MIDI devices");
    backend.outputs = rawMidiDevices(folder);
    backend.inputs = backend.outputs;
    if (backend.outputs.isEmpty())
        backend.unavailable = QStringLiteral("there are no raw MIDI devices in %1").arg(folder);
    return backend;
}

} // namespace hx
