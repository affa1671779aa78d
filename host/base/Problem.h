/** @file
 * What went wrong, told in three steps, and the exit code it leads to.
 */
#pragma once

#include "host/base/ExitCode.h"

#include <QString>

namespace hx {

struct Problem {
    ExitCode code = ExitCode::Internal;
    QString what;     /**< what happened, with the value */
    QString expected; /**< what was expected instead; empty where that is plain */
    QString next;     /**< what to do now; empty where only the caller knows */
};

/** A file that could not be read or written; the caller knows which, and what to do. */
inline Problem fileProblem(const QString& what)
{
    return {ExitCode::FileError, what, QString(), QString()};
}

} // namespace hx
