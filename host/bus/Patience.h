/** @file
 * How long a bus waits for what is between it and the product.
 */
#pragma once

#include "host/base/Clock.h"

namespace hx {

/** The rules stay as they are, whatever the patience: what counts as an answer, how often to ask. */
struct Patience {
    unsigned factor = 1;   /**< waits, and pauses within a message, may last so many times longer */
    int sends = 1;         /**< how often a message is handed to a port that does not take it */
    Microseconds rest = 0; /**< before anything is asked or sent again */
};

/** With an operating system that delivers late, gives up messages or starts with damaged ones. */
constexpr Patience slowHostPatience = {4, 4, 2500 * microsecondsPerMillisecond};

} // namespace hx
