// Does with a plugin file in a process of its own what a damaged file may not survive.
#pragma once

#include "deviceinterface/DeviceInterface.h"

#include <QString>

#include <functional>

namespace hx {

// Runs `work` in a child process whose output goes nowhere. Empty when the work came to its end, else
// what happened instead: "it crashed (Segmentation fault)". Work that takes more than ten seconds is
// ended. Where the system has no process to give, nothing is tried and the text is empty.
QString trialProblem(const std::function<void()>& work);

// Asks the plugin all that a host asks, over a bus that stays silent.
void askEverything(DeviceInterface& device);

} // namespace hx
