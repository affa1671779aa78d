// Finds the port that a person means.
#pragma once

#include "ports/PortList.h"
#include "ports/RtMidiPort.h"

#include <optional>

namespace hx {

// Either an address, or why there is none.
struct PortSelection {
    std::optional<PortAddress> address;
    QString what;
    QString expected;
    QString next;
};

// `output` and `input` are each the name of a port, a part of one in whatever case, or
// "backend:name"; a whole name goes before a part of another. An empty `input` means the one that
// belongs to the output. One port of each direction must fit, in one backend: several that fit are
// an error that lists them all.
PortSelection selectPort(const QList<MidiBackend>& backends, const QString& output,
                         const QString& input);

// The same for an input alone; the address then has no output.
PortSelection selectInput(const QList<MidiBackend>& backends, const QString& input);

} // namespace hx
