#include "host/base/WirePace.h"

namespace hx {

Microseconds Pace::wireTime(qint64 bytes) const
{
    return bytesPerSecond > 0 ? bytes * microsecondsPerSecond / bytesPerSecond : 0;
}

} // namespace hx
