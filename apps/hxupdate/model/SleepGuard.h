// Keeps the computer from going to sleep.
#pragma once

namespace hxupdate {

class SleepGuard {
public:
    virtual ~SleepGuard() = default;

    // From now on the computer stays awake. False when it cannot be kept so.
    virtual bool hold() = 0;
    virtual void release() = 0;
};

} // namespace hxupdate
