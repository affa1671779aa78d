/** @file
 * What is wrong with an update image or the file that holds it: `what` of such a problem says what
 * was expected too.
 */
#pragma once

#include "host/base/Problem.h"

#include <vector>

namespace hx {

using ImageProblems = std::vector<Problem>;

/** "message 17, byte 2482 of the file: ... Do ..." in one line; messages count from 1 in it. */
QString imageProblemLine(const Problem& problem);

/** Problems that are listed at most: a file may have one at each of its bytes. */
constexpr size_t mostImageProblems = 1000;

/** Adds a problem; in the place of the last one that is listed it says that there are more. */
void addProblem(ImageProblems& problems, const Place& place, const QString& what,
                const QString& next);

} // namespace hx
