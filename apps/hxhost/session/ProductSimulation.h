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
                                                  const SimulationOptions& options);

// Says in the report that the product stopped, because `path` could not take what it had to store.
void failStoring(CommandContext& context, const QString& path, const QString& error);

} // namespace hx::host
