/** @file
 * How fast bytes travel: the DIN wire, and what a port is asked to keep to.
 */
#pragma once

#include "host/base/Clock.h"

namespace hx {

/** DIN MIDI is 31 250 baud with 10 bits a byte: 3 125 bytes a second, 320 microseconds each. */
constexpr qint64 dinBytesPerSecond = 3125;

struct Pace {
    qint64 bytesPerSecond = dinBytesPerSecond; /**< 0: as fast as the port takes them */
    Microseconds gap = 0;                      /**< pause after each message */

    /** Time that `bytes` take on the wire at this pace; 0 when it is not limited. */
    Microseconds wireTime(qint64 bytes) const;
};

} // namespace hx
