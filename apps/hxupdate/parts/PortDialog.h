// Asks which port the product is on.
#pragma once

#include "apps/hxupdate/model/UpdateModel.h"

class QWidget;

namespace hxupdate {

// The ports are listed as they come and go; the one that is chosen is picked.
void choosePort(QWidget* parent, UpdateModel& model);

} // namespace hxupdate
