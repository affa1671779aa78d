/** @file
 * What went wrong, told in three steps, and the exit code it leads to.
 */
#pragma once

#include "host/base/ExitCode.h"

#include <QString>

namespace hx {

/** Where in a file it is. A member that says nothing keeps its first value. */
struct Place {
    int message = -1;   /**< of an update image, from 0 */
    qint64 offset = -1; /**< byte, from 0 */
    int line = 0;       /**< of a text, from 1 */
    int column = 0;     /**< character of the line, from 1 */
};

struct Problem {
    ExitCode code = ExitCode::Internal;
    QString what;     /**< what happened, with the value */
    QString expected; /**< what was expected instead; empty where that is plain */
    QString next;     /**< what to do now; empty where only the caller knows */
    Place place = {};
};

/** A file that could not be read or written; the caller knows which, and what to do. */
inline Problem fileProblem(const QString& what)
{
    return {ExitCode::FileError, what, {}, {}};
}

} // namespace hx
