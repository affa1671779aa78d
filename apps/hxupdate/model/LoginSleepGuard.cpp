#include "apps/hxupdate/model/LoginSleepGuard.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>

namespace hxupdate {

namespace {

constexpr int longestWaitMs = 2000;

} // namespace

bool LoginSleepGuard::hold()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
    call << QStringLiteral("sleep:idle") << QStringLiteral("hxupdate")
         << QStringLiteral("A firmware update is being sent.") << QStringLiteral("block");
    const QDBusReply<QDBusUnixFileDescriptor> lock =
        QDBusConnection::systemBus().call(call, QDBus::Block, longestWaitMs);
    if (lock.isValid())
        m_lock = lock.value();
    return m_lock.isValid();
}

void LoginSleepGuard::release()
{
    m_lock = QDBusUnixFileDescriptor();
}

} // namespace hxupdate
