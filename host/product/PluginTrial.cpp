#include "host/product/PluginTrial.h"

#include "deviceinterface/Bus.h"

#include <QtGlobal>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace hx {

namespace {

constexpr unsigned patienceSeconds = 10;

class SilentBus : public Bus {
public:
    BusData transact(BusData, QString, unsigned) override { return {}; }
    BusData transactExpect(BusData const&, ResponceData const&, unsigned) override { return {}; }
};

// What the plugin logs is said, and recorded, when it is loaded for good; a core file would only be in
// the way.
void quieten()
{
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
}

// An exception that leaves the work is a crash like any other.
[[noreturn]] void runTrial(const std::function<void()>& work) noexcept
{
    quieten();
    std::signal(SIGALRM, SIG_DFL);
    alarm(patienceSeconds);
    work();
    _exit(EXIT_SUCCESS); // what is to be done at the end of the program is not the child's to do
}

QString trialEndingText(int status)
{
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM)
        return QStringLiteral("it did not return within %1 seconds").arg(patienceSeconds);
    if (WIFSIGNALED(status))
        return QStringLiteral("it crashed (%1)")
            .arg(QString::fromLocal8Bit(strsignal(WTERMSIG(status))));
    if (WEXITSTATUS(status) != EXIT_SUCCESS)
        return QStringLiteral("it ended the program with exit code %1").arg(WEXITSTATUS(status));
    return QString();
}

} // namespace

QString trialProblem(const std::function<void()>& work)
{
    const pid_t child = fork();
    if (child == 0)
        runTrial(work);
    int status = 0;
    while (child > 0 && waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return trialEndingText(status);
}

void askEverything(DeviceInterface& device)
{
    SilentBus bus;
    device.bus = &bus;
    const QString texts = device.classVersion() + device.nickName() + device.productName() +
                          device.productInPortName() + device.productOutPortName() + device.esn();
    device.setLastError(texts);
    device.canSupport(device.fidpid() + device.rawFidpid() + quint32(device.versionNumber()));
    device.isNak(device.lastProgrammingMsg());
    device.isCodeValid(Fwu);
    device.isCodeValid(Fwd);
    device.getGenderList();
    device.getFidPidNameMap();
    device.getNameFidPidMap();
    device.getUpdateProtocol(texts, {});
    device.lookup(QStringLiteral("identify"));
    device.lookupInt(QStringLiteral("command.timeout.ms"));
    device.lookupStr(QStringLiteral("identify.response"));
    device.bus = nullptr;
}

} // namespace hx
