// The product that a plugin serves, simulated.
#pragma once

#include "apps/hxhost/session/CommandContext.h"

#include "deviceinterface/DeviceInterface.h"
#include "simulator/FaultyProduct.h"

#include <optional>

namespace hx::host {

// A fresh one with these faults; none, with the problem in the report, when the plugin does not say
// enough of its product.
std::optional<sim::FaultyProduct> simulateProduct(CommandContext& context, DeviceInterface& device,
                                                  const std::vector<std::string>& faults);

} // namespace hx::host
