// What the plugin says of its product, for targets that read images.
#pragma once

#include "host/product/ProductDescription.h"
#include "plugin/ValdrinBootInterface.h"

namespace hx {
namespace fuzz {

inline const ProductDescription& description()
{
    static const ProductDescription described = [] {
        ValdrinBootInterface device;
        return describeProduct(device);
    }();
    return described;
}

} // namespace fuzz
} // namespace hx
