// A faulty link whose end the host finds as a device: a pseudo terminal, on the link's clock.
#pragma once

#include "tests/sweep/FaultyLink.h"

#include <memory>

namespace sweep {

// A port on a new device. What the host writes to the device goes over `link`, which must outlive
// the port; when the link is gone, the device is too.
std::unique_ptr<hx::MidiPort> deviceOver(FaultyLink& link);

} // namespace sweep
