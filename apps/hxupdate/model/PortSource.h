// Where the window gets its ports from: this machine, or the simulated product.
#pragma once

#include "deviceinterface/DeviceInterface.h"
#include "host/base/Result.h"
#include "host/bus/MidiPort.h"

#include <QStringList>

#include <memory>

namespace hxupdate {

// Used by one thread at a time.
class PortSource {
public:
    virtual ~PortSource() = default;

    // The ports that bytes can be sent to, each by a name that tells it from all others.
    virtual QStringList list() = 0;

    // Opens one of them for both directions. `device` is asked for what tells its product's port
    // from others.
    virtual hx::Result<std::unique_ptr<hx::MidiPort>> open(const QString& port,
                                                           DeviceInterface& device) = 0;
};

} // namespace hxupdate
