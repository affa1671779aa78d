/** @file
 * Runs a firmware update as the plugin describes it, and says honestly how it ended.
 */
#pragma once

#include "host/update/UpdateResult.h"

namespace hx {

/**
 * The whole update. Uses `device` (its `bus` is set by the caller) only for what it knows; every
 * byte goes over `bus`. The run ends in bounded time whatever the product does, and leaves a
 * product that a second run recovers: data message 0 always starts afresh.
 */
UpdateResult runUpdate(DeviceInterface& device, PortBus& bus, const UpdateImage& image,
                       const UpdateOptions& options = {});

/**
 * The checks after an update alone, for `hxhost verify`: Succeeded when stored and calculated
 * checksum agree byte for byte (with those of `image` too, when one is given) and the product
 * answers to the identity request.
 */
UpdateResult verifyProduct(DeviceInterface& device, PortBus& bus,
                           const UpdateImage* image = nullptr);

} // namespace hx
