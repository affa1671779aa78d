/** @file
 * One thing that is wrong with an update image or the file that holds it.
 */
#pragma once

#include <QString>

#include <vector>

namespace hx {

struct ImageProblem {
    int message = -1;   /**< index of the message, from 0; -1 when it concerns the whole file */
    qint64 offset = -1; /**< byte in the file, from 0; -1 when there is no such byte */
    QString text;       /**< what is wrong, with the value, and what was expected */
    QString advice;     /**< what to do */

    /** "message 17, byte 2482 of the file: ... Do ..." in one line; messages count from 1 in it. */
    QString line() const;
};

using ImageProblems = std::vector<ImageProblem>;

/** Problems that are listed at most: a file may have one at each of its bytes. */
constexpr size_t mostImageProblems = 1000;

/** Adds a problem; in the place of the last one that is listed it says that there are more. */
void addProblem(ImageProblems& problems, const ImageProblem& problem);

} // namespace hx
