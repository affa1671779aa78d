// The computer is kept awake through the login loginInterface, played by python3-dbusmock on a bus of its
// own.
#include "apps/hxupdate/model/LoginSleepGuard.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusReply>
#include <QProcess>

#include <gtest/gtest.h>

using namespace hxupdate;

namespace {

const char loginService[] = "org.freedesktop.login1";
const char loginPath[] = "/org/freedesktop/login1";
const char loginInterface[] = "org.freedesktop.login1.Manager";

// The process keeps its connection to the system bus: one bus to its end.
class SystemBus {
public:
    SystemBus()
    {
        m_daemon.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
        EXPECT_TRUE(m_daemon.waitForReadyRead());
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_daemon.readLine().trimmed());
    }
    ~SystemBus()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

private:
    QProcess m_daemon;
};

// A lock is the writing end of a pipe: it is released when the other end is at its end.
const char askInhibit[] = "import os\n"
                          "self.said = args[:]\n"
                          "self.other_end, lock = os.pipe()\n"
                          "ret = dbus.types.UnixFd(lock)\n"
                          "os.close(lock)\n";
const char askIsHeld[] = "import select\n"
                         "ret = not select.select([self.other_end], [], [], 0)[0]\n";
const char askSaid[] = "ret = self.said\n";

class LoginManager {
public:
    LoginManager()
    {
        m_mock.start("/usr/bin/python3",
                     {"-m", "dbusmock", "--system", loginService, loginPath, loginInterface});
        EXPECT_TRUE(m_mock.waitForStarted());
        QDBusConnection bus = QDBusConnection::systemBus();
        while (m_mock.state() == QProcess::Running &&
               !bus.interface()->isServiceRegistered(loginService))
            m_mock.waitForReadyRead(20);
        add("Inhibit", "ssss", "h", askInhibit);
        add("IsHeld", "", "b", askIsHeld);
        add("Said", "", "as", askSaid);
    }
    ~LoginManager()
    {
        m_mock.kill();
        m_mock.waitForFinished();
    }

    QVariant ask(const QString& method) const
    {
        QDBusInterface mock(loginService, loginPath, loginInterface, QDBusConnection::systemBus());
        return mock.call(method).arguments().value(0);
    }

private:
    void add(const char* name, const char* in, const char* out, const char* code)
    {
        QDBusInterface mock(loginService, loginPath, "org.freedesktop.DBus.Mock",
                            QDBusConnection::systemBus());
        const QDBusMessage answer = mock.call("AddMethod", loginInterface, QString(name),
                                              QString(in), QString(out), QString(code));
        EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
    }

    QProcess m_mock;
};

class LoginSleepGuardTest : public testing::Test {
protected:
    static void SetUpTestSuite() { static const SystemBus bus; }
};

} // namespace

TEST_F(LoginSleepGuardTest, HoldsALockAndReleasesIt)
{
    const LoginManager login;
    LoginSleepGuard guard;
    EXPECT_TRUE(guard.hold());
    EXPECT_TRUE(login.ask("IsHeld").toBool());
    EXPECT_EQ(login.ask("Said").toStringList(),
              QStringList({"sleep:idle", "hxupdate", "A firmware update is being sent.", "block"}));
    guard.release();
    EXPECT_FALSE(login.ask("IsHeld").toBool());
}

TEST_F(LoginSleepGuardTest, SaysWhenThereIsNoLoginManager)
{
    LoginSleepGuard guard;
    EXPECT_FALSE(guard.hold());
    guard.release();
}
