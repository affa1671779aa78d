#include "ports/SimulatedIdentity.h"

#include <algorithm>

namespace hx {

std::optional<sim::ProductIdentity> simulatedIdentity(const ProductDescription& product)
{
    const QByteArray manufacturer = product.manufacturer();
    sim::ProductIdentity identity;
    if (manufacturer.size() != static_cast<int>(identity.manufacturer.size()))
        return std::nullopt;
    std::copy(manufacturer.begin(), manufacturer.end(), identity.manufacturer.begin());
    identity.family = static_cast<quint8>(product.headerIdentifier() >> 16);
    identity.model = static_cast<quint8>(product.headerIdentifier());
    identity.name = product.name;
    return identity;
}

} // namespace hx
