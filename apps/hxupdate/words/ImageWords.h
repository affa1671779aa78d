// What is said of the file that was chosen.
#pragma once

#include "apps/hxupdate/model/ImageFacts.h"
#include "apps/hxupdate/words/Advice.h"

namespace hxupdate {

Advice adviceOf(ImageFault fault, const QString& productName);

} // namespace hxupdate
