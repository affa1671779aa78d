/** @file
 * The product that a plugin serves, as the simulator takes it.
 */
#pragma once

#include "host/product/ProductDescription.h"
#include "simulator/SimulatedProduct.h"

#include <optional>

namespace hx {

/**
 * None for a product whose messages the plugin does not describe, or whose maker has an identifier
 * of one byte: the simulator takes three.
 */
std::optional<sim::ProductIdentity> simulatedIdentity(const ProductDescription& product);

} // namespace hx
