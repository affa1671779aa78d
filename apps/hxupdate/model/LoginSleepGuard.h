// Keeps the computer from going to sleep by an inhibitor lock of the login manager.
#pragma once

#include "apps/hxupdate/model/SleepGuard.h"

#include <QDBusUnixFileDescriptor>

namespace hxupdate {

class LoginSleepGuard final : public SleepGuard {
public:
    bool hold() override;
    void release() override;

private:
    QDBusUnixFileDescriptor m_lock; // held as long as it is open
};

} // namespace hxupdate
