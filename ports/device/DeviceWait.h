/** @file
 * How a device port waits: on the machine's clock, or as a test plays it.
 */
#pragma once

#include "host/base/Clock.h"

namespace hx {

class DeviceWait {
public:
    virtual ~DeviceWait() = default;

    virtual Clock& clock() = 0;

    /** Returns when the descriptor has input, or is gone, or `deadline` has come; or earlier. */
    virtual void forInput(int descriptor, Microseconds deadline) = 0;

    /** The same until it takes output. */
    virtual void forRoom(int descriptor, Microseconds deadline) = 0;
};

class RealDeviceWait final : public DeviceWait {
public:
    Clock& clock() override { return m_clock; }
    void forInput(int descriptor, Microseconds deadline) override;
    void forRoom(int descriptor, Microseconds deadline) override;

private:
    void wait(int descriptor, short events, Microseconds deadline);

    SteadyClock m_clock;
};

} // namespace hx
