/** @file
 * Whether a product that answers is one that was asked before.
 */
#pragma once

#include "host/product/ProductReadings.h"

namespace hx {

/** What a product has told of itself; what it was not asked for, or did not tell, is not good. */
struct ProductMemory {
    IdentityReading identity;
    EsnReading esn;
};

/**
 * Asks the product behind `reader` for its identity, and for its serial number where that of before
 * is known, and compares both: maker, family and model, and all bytes of the serial number. The
 * version may be another one, because an update may have begun. The same is only who says the same;
 * another one is believed when it says the same twice, as one bit may change on the way. Where no
 * identity is known nothing is asked.
 */
ReturnVerdict recognise(ProductReader& reader, const ProductMemory& before);

} // namespace hx
