#include "ports/PortMemory.h"

#include "ports/device/DevicePort.h"

namespace hx {

namespace {

QStringList portsOf(const QList<MidiBackend>& backends, const QString& name,
                    QStringList MidiBackend::*direction)
{
    for (const MidiBackend& backend : backends) {
        if (backend.name == name)
            return backend.*direction;
    }
    return {};
}

} // namespace

bool isCertain(const PortIdentity& identity)
{
    return !identity.serialNumber.isEmpty() || !identity.stableId.isEmpty();
}

PortMemory::PortMemory(const PortAddress& address, const QList<MidiBackend>& present)
    : m_address(address), m_output(endOf(address.backend, address.output,
                                         portsOf(present, address.backend, &MidiBackend::outputs))),
      m_input(endOf(address.backend, address.input,
                    portsOf(present, address.backend, &MidiBackend::inputs)))
{
}

PortMemory::End PortMemory::endOf(const QString& backend, const QString& port,
                                  const QStringList& present)
{
    End end = {identityOfPort(backend, port), present};
    end.others.removeAll(port);
    return end;
}

Result<QString> PortMemory::findEnd(const End& end, const QStringList& present)
{
    QStringList names;
    QList<PortIdentity> identities;
    for (const QString& name : present) {
        if (!isCertain(end.identity) && end.others.contains(name))
            continue;
        names << name;
        identities << identityOfPort(end.identity.backend, name);
    }
    const Result<int> found = findPort(end.identity, identities);
    if (!found)
        return found.problem();
    return names.at(*found);
}

Result<PortAddress> PortMemory::find(const QList<MidiBackend>& present) const
{
    PortAddress address = m_address;
    if (!m_address.output.isEmpty()) {
        const Result<QString> output =
            findEnd(m_output, portsOf(present, m_address.backend, &MidiBackend::outputs));
        if (!output)
            return output.problem();
        address.output = *output;
    }
    const Result<QString> input =
        findEnd(m_input, portsOf(present, m_address.backend, &MidiBackend::inputs));
    if (!input)
        return input.problem();
    address.input = *input;
    return address;
}

Result<QString> findDevice(const PortIdentity& identity, const QString& folder,
                           const QString& system)
{
    const QStringList paths = rawMidiDevices(folder);
    QList<PortIdentity> identities;
    for (const QString& path : paths)
        identities << identityOfDevice(path, system);
    const Result<int> found = findPort(identity, identities);
    if (!found)
        return found.problem();
    return paths.at(*found);
}

} // namespace hx
