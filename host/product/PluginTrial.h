// Tries in a process of its own what may crash with a damaged plugin file.
#pragma once

#include "deviceinterface/DeviceInterface.h"

#include <QString>

#include <functional>

namespace hx {

// Runs `work` in a child process whose output goes nowhere. Empty when the work was completed,
// else what happened: "it crashed (Segmentation fault)". Work that takes more than ten seconds is
// ended. When no process can be started, nothing is tried and the text is empty.
QString trialProblem(const std::function<void()>& work);

// Asks the plugin all that a host asks, over a bus that stays silent.
void askEverything(DeviceInterface& device);

} // namespace hx
