// Where the window gets its ports from: this machine, or the simulated product.
#pragma once

#include "deviceinterface/DeviceInterface.h"
#include "host/base/Result.h"
#include "host/bus/MidiPort.h"

#include <QStringList>

#include <functional>
#include <memory>

namespace hxupdate {

// Told when a port in use went away, and when it is there again; `text` says it in the host's words.
using PortMoved = std::function<void(bool isThere, const QString& text)>;

// Used by one thread at a time.
class PortSource {
public:
    virtual ~PortSource() = default;

    // The ports that bytes can be sent to, each by a name that tells it from all others.
    virtual QStringList list() = 0;

    // Opens one of them for both directions. `device` is asked for what tells its product's port
    // from others. A port that goes away is waited for as the host does it, and found again under
    // another name or number; not when `moved` is null.
    virtual hx::Result<std::unique_ptr<hx::MidiPort>>
    open(const QString& port, DeviceInterface& device, const PortMoved& moved) = 0;
};

} // namespace hxupdate
