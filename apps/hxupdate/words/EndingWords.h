// What is said of the end of an update.
#pragma once

#include "apps/hxupdate/model/Ending.h"
#include "apps/hxupdate/words/Advice.h"

namespace hxupdate {

Advice adviceOf(Ending ending, const QString& productName);

} // namespace hxupdate
