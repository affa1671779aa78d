// What state the product is in, in one sentence.
#pragma once

#include "host/product/ProductState.h"

namespace hxupdate {

QString conditionText(hx::ProductCondition condition);

} // namespace hxupdate
