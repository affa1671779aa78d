// What is said while a product is looked for.
#pragma once

#include "apps/hxupdate/model/Connection.h"
#include "apps/hxupdate/words/Advice.h"

namespace hxupdate {

Advice adviceOf(const Connection& connection);

} // namespace hxupdate
