// What the end of a run says about the product that it reached.
#pragma once

#include "apps/hxhost/batch/ChildRun.h"
#include "host/base/ExitCode.h"

namespace hx::host {

bool hasEndedWith(const ChildResult& result, ExitCode code);

// Whether a product that the plugin serves has answered `info`, whatever else it did not tell.
bool hasProduct(const ChildResult& result);

// The outcome of a unit that this run was for, and the reason: empty after success.
QString outcomeOf(const ChildResult& result);
QString reasonOf(const ChildResult& result);

} // namespace hx::host
