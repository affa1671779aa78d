#include "ports/device/PseudoTerminalPort.h"

#include "host/base/FileName.h"
#include "ports/device/DevicePort.h"
#include "qt/Saturated.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace hx {

namespace {

constexpr int longestRead = 4096;
constexpr Microseconds longestWrite = 100 * microsecondsPerMillisecond; // nobody reads after that
constexpr Microseconds lookForPeer = 5 * microsecondsPerMillisecond;

Problem terminalProblem(const QString& what, int error)
{
    return {ExitCode::NoPort, QStringLiteral("%1: %2").arg(what, qt_error_string(error)),
            QStringLiteral("a system that gives pseudo terminals"),
            QStringLiteral("close some terminals, then try again")};
}

Problem linkProblem(const QString& link, const QString& why)
{
    return {ExitCode::FileError,
            QStringLiteral("the link \"%1\" cannot be made: %2").arg(link, why),
            QStringLiteral("a new name in a folder that may be written to"),
            QStringLiteral("give another name after --device")};
}

// A link that an earlier run has left.
bool isLinkToDevice(const QByteArray& link)
{
    char target[4096];
    const ssize_t size = readlink(link.constData(), target, sizeof target);
    return size > 0 && QByteArray(target, int(size)).startsWith("/dev/");
}

} // namespace

Result<std::unique_ptr<MidiPort>> PseudoTerminalPort::open(const QString& link, const Pace& pace)
{
    const int descriptor = posix_openpt(O_RDWR | O_NOCTTY);
    if (descriptor < 0)
        return terminalProblem(QStringLiteral("no device can be made"), errno);
    std::unique_ptr<PseudoTerminalPort> port(new PseudoTerminalPort(descriptor, pace));
    const Result<> ready = port->setUp(link);
    if (!ready)
        return ready.problem();
    return std::unique_ptr<MidiPort>(std::move(port));
}

PseudoTerminalPort::PseudoTerminalPort(int descriptor, const Pace& pace)
    : m_descriptor(descriptor), m_pacer(m_wait.clock(), pace)
{
}

PseudoTerminalPort::~PseudoTerminalPort()
{
    if (!m_link.isEmpty())
        unlink(fileNameBytes(m_link).constData());
    close(m_descriptor);
}

// The other end is opened once, so that it passes bytes unchanged whoever opens it.
Result<> PseudoTerminalPort::setUp(const QString& link)
{
    fcntl(m_descriptor, F_SETFD, FD_CLOEXEC);
    fcntl(m_descriptor, F_SETFL, O_NONBLOCK);
    const char* name = nullptr;
    if (grantpt(m_descriptor) == 0 && unlockpt(m_descriptor) == 0)
        name = ptsname(m_descriptor);
    if (name == nullptr)
        return terminalProblem(QStringLiteral("no device can be made"), errno);
    m_device = QString::fromLatin1(name);
    const int end = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (end < 0)
        return terminalProblem(QStringLiteral("no device can be made"), errno);
    struct termios raw = {};
    tcgetattr(end, &raw);
    cfmakeraw(&raw);
    tcsetattr(end, TCSANOW, &raw);
    close(end);
    return link.isEmpty() ? Result<>() : makeLink(link);
}

Result<> PseudoTerminalPort::makeLink(const QString& link)
{
    const QByteArray path = fileNameBytes(link);
    if (isLinkToDevice(path))
        unlink(path.constData());
    if (symlink(fileNameBytes(m_device).constData(), path.constData()) != 0)
        return linkProblem(link, qt_error_string(errno));
    m_link = link;
    return {};
}

QString PseudoTerminalPort::name() const
{
    return deviceName(m_link.isEmpty() ? m_device : m_link);
}

bool PseudoTerminalPort::isAlone() const
{
    struct pollfd look = {m_descriptor, 0, 0};
    return poll(&look, 1, 0) > 0 && (look.revents & POLLHUP) != 0;
}

qint64 PseudoTerminalPort::send(const QByteArray& message)
{
    const int size = saturated(message.size());
    m_pacer.waitForTurn(size);
    m_pacer.waitForWire(size);
    if (!isAlone())
        write(message);
    return size;
}

void PseudoTerminalPort::write(const QByteArray& message)
{
    const Microseconds deadline = clock().now() + longestWrite;
    qint64 written = 0;
    while (written < message.size() && clock().now() < deadline) {
        const ssize_t count =
            ::write(m_descriptor, message.constData() + written, size_t(message.size() - written));
        if (count > 0)
            written += count;
        else if (errno == EAGAIN)
            m_wait.forRoom(m_descriptor, deadline);
        else if (errno != EINTR)
            return;
    }
}

MidiChunk PseudoTerminalPort::receive(Microseconds deadline)
{
    for (;;) {
        QByteArray bytes(longestRead, Qt::Uninitialized);
        const ssize_t count = read(m_descriptor, bytes.data(), size_t(bytes.size()));
        const Microseconds now = clock().now();
        if (count > 0) {
            bytes.truncate(int(count));
            return {bytes, now};
        }
        if (now >= deadline)
            return {};
        if (isAlone())
            clock().sleepUntil(std::min(deadline, now + lookForPeer));
        else
            m_wait.forInput(m_descriptor, deadline);
    }
}

} // namespace hx
