// Asks whether an update that runs shall be stopped.
#pragma once

#include "apps/hxupdate/model/UpdateModel.h"

class QWidget;

namespace hxupdate {

// Stops it when the answer is yes; `stopped` is called then. Asks once at a time, and no longer than
// the update runs.
void askWhetherToStop(
    QWidget* parent, UpdateModel& model, const std::function<void()>& stopped = [] {});

} // namespace hxupdate
