// What went wrong, told in three steps, and the exit code it leads to.
#pragma once

#include "apps/hxhost/report/ExitCode.h"

#include <QString>

namespace hx::host {

struct Problem {
    ExitCode code = ExitCode::Internal;
    QString what;     // what happened, with the value
    QString expected; // what was expected instead
    QString next;     // what to do now
};

} // namespace hx::host
