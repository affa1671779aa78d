#include "ports/device/DeviceFile.h"

#include "host/base/FileName.h"
#include "ports/device/KernelBuffer.h"

#include <QFileInfo>

#include <cerrno>
#include <optional>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace hx {

namespace {

Problem problem(const QString& what, const char* expected, const QString& next)
{
    return {ExitCode::NoPort, what, QString::fromLatin1(expected), next};
}

Problem inUse(const QString& path)
{
    return problem(
        QStringLiteral("the device \"%1\" is in use by another program").arg(path),
        "a device that no other program has open",
        QStringLiteral("close that program ('fuser -v %1' names it), then try again").arg(path));
}

Problem notADevice(const QString& path, const QString& what)
{
    return problem(
        QStringLiteral("\"%1\" is not a device: it is %2").arg(path, what),
        "a character device, a pseudo terminal or a FIFO",
        QStringLiteral(
            "give a device, such as device:/dev/snd/midiC1D0; 'ls /dev/snd' lists them"));
}

Problem forbidden(const QString& path)
{
    const QString group = QFileInfo(path).group();
    return problem(QStringLiteral("the device \"%1\" may not be opened by this user").arg(path),
                   "a device that this user may read and write",
                   QStringLiteral("join the group that it belongs to ('sudo usermod -aG %1 "
                                  "\"$USER\"'), then log in again")
                       .arg(group.isEmpty() ? QStringLiteral("audio") : group));
}

Problem openingProblem(const QString& path, int error)
{
    switch (error) {
    case ENOENT:
    case ENOTDIR:
        return problem(QStringLiteral("there is no device \"%1\"").arg(path),
                       "the name of a device that is connected",
                       QStringLiteral("connect it; 'ls /dev/snd' lists the MIDI devices"));
    case EACCES:
    case EPERM:
        return forbidden(path);
    case EBUSY:
        return inUse(path);
    default:
        return problem(QStringLiteral("the device \"%1\" cannot be opened: %2")
                           .arg(path, qt_error_string(error)),
                       "a device that is connected and works",
                       QStringLiteral("unplug it and connect it again, or choose another device"));
    }
}

Problem unreadFifo(const QString& path)
{
    return problem(QStringLiteral("nobody reads from the FIFO \"%1\"").arg(path),
                   "a FIFO that another program reads from",
                   QStringLiteral("start that program first"));
}

Problem oneWayFifo(const QString& path)
{
    return problem(QStringLiteral("the FIFO \"%1\" carries bytes one way only").arg(path),
                   "one FIFO for each direction",
                   QStringLiteral("name the one that answers come from with --in-port "
                                  "device:FILE"));
}

QString kindOf(mode_t mode)
{
    if (S_ISDIR(mode))
        return QStringLiteral("a folder");
    if (S_ISBLK(mode))
        return QStringLiteral("a disk");
    return S_ISREG(mode) ? QStringLiteral("a file") : QStringLiteral("something else");
}

int flagsFor(DeviceUse use)
{
    constexpr int always = O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    if (use == DeviceUse::Both)
        return O_RDWR | always;
    return (use == DeviceUse::Input ? O_RDONLY : O_WRONLY) | always;
}

// What forbids to open it, told from what it is; nothing of a FIFO or a character device.
std::optional<Problem> kindProblem(const QString& path, DeviceUse use)
{
    struct stat facts = {};
    if (stat(fileNameBytes(path).constData(), &facts) != 0)
        return openingProblem(path, errno);
    if (S_ISFIFO(facts.st_mode) && use == DeviceUse::Both)
        return oneWayFifo(path);
    if (S_ISFIFO(facts.st_mode) || S_ISCHR(facts.st_mode))
        return std::nullopt;
    return notADevice(path, kindOf(facts.st_mode));
}

} // namespace

// A terminal while it passes bytes unchanged.
struct DeviceFile::Terminal {
    explicit Terminal(int terminal) : descriptor(terminal)
    {
        tcgetattr(descriptor, &before);
        struct termios raw = before;
        cfmakeraw(&raw);
        raw.c_cflag |= CLOCAL | CREAD;
        raw.c_cc[VMIN] = 1; // a read without input says so, and not that the end has come
        raw.c_cc[VTIME] = 0;
        tcsetattr(descriptor, TCSANOW, &raw);
        reserveTerminal(descriptor);
    }
    ~Terminal()
    {
        releaseTerminal(descriptor);
        tcsetattr(descriptor, TCSANOW, &before);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    int descriptor;
    struct termios before = {};
};

Result<std::unique_ptr<DeviceFile>> DeviceFile::open(const QString& path, DeviceUse use)
{
    if (const std::optional<Problem> unfit = kindProblem(path, use))
        return *unfit;
    const int descriptor = ::open(fileNameBytes(path).constData(), flagsFor(use));
    if (descriptor < 0)
        return errno == ENXIO && use == DeviceUse::Output ? unreadFifo(path)
                                                          : openingProblem(path, errno);
    // The lock of a FIFO is its end's own: who reads it and who writes to it are two programs.
    std::unique_ptr<DeviceFile> file(new DeviceFile(descriptor));
    if (!file->isFifo() && flock(descriptor, LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK ? inUse(path) : openingProblem(path, errno);
    if (isatty(descriptor) != 0)
        file->m_terminal = std::make_unique<Terminal>(descriptor);
    return file;
}

DeviceFile::DeviceFile(int descriptor)
    : m_descriptor(descriptor), m_capacity(rawMidiRoom(descriptor))
{
}

DeviceFile::~DeviceFile()
{
    m_terminal.reset();
    close(m_descriptor);
}

bool DeviceFile::isFifo() const
{
    struct stat facts = {};
    return fstat(m_descriptor, &facts) == 0 && S_ISFIFO(facts.st_mode);
}

qint64 DeviceFile::bytesWaiting() const
{
    if (m_capacity > 0)
        return m_capacity - rawMidiRoom(m_descriptor);
    return m_terminal ? terminalBytesWaiting(m_descriptor) : fifoBytesWaiting(m_descriptor);
}

bool DeviceFile::isHungUp() const
{
    struct pollfd look = {m_descriptor, 0, 0};
    return poll(&look, 1, 0) > 0 && (look.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

} // namespace hx
