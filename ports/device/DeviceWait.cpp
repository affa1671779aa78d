#include "ports/device/DeviceWait.h"

#include <algorithm>

#include <poll.h>

namespace hx {

void RealDeviceWait::forInput(int descriptor, Microseconds deadline)
{
    wait(descriptor, POLLIN, deadline);
}

void RealDeviceWait::forRoom(int descriptor, Microseconds deadline)
{
    wait(descriptor, POLLOUT, deadline);
}

// Poll counts in milliseconds: the last one is waited for whole.
void RealDeviceWait::wait(int descriptor, short events, Microseconds deadline)
{
    constexpr Microseconds longest = 3600 * microsecondsPerSecond;
    const Microseconds left =
        std::min(std::max<Microseconds>(deadline - m_clock.now(), 0), longest);
    struct pollfd look = {descriptor, events, 0};
    poll(&look, 1, int((left + microsecondsPerMillisecond - 1) / microsecondsPerMillisecond));
}

} // namespace hx
