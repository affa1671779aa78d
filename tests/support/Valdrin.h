// The product that most tests simulate.
#pragma once

#include "simulator/SimulatedProduct.h"

namespace hx::sim {

inline ProductIdentity valdrin()
{
    return {{{0x00, 0x6B, 0x2D}}, 0x30, 0x41, QStringLiteral("Valdrin")};
}

} // namespace hx::sim
