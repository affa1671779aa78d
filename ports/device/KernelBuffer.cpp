#include "ports/device/KernelBuffer.h"

#include <cstring>

#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <termios.h>
#include <unistd.h>

#ifdef __linux__
#include <sound/asound.h>
#include <sys/sysmacros.h>
#endif

namespace hx {

namespace {

bool isPseudoTerminal(int descriptor)
{
    struct stat facts = {};
    if (fstat(descriptor, &facts) != 0)
        return false;
#ifdef __linux__
    constexpr unsigned firstMajor =
        136; // of the slave ends, as the kernel's list of devices has it
    constexpr unsigned lastMajor = 143;
    return major(facts.st_rdev) >= firstMajor && major(facts.st_rdev) <= lastMajor;
#else
    const char* name = ttyname(descriptor);
    return name != nullptr && std::strncmp(name, "/dev/ttys", 9) == 0;
#endif
}

qint64 byteCount(int descriptor, unsigned long request)
{
    int count = 0;
    return ioctl(descriptor, request, &count) == 0 && count > 0 ? count : 0;
}

} // namespace

qint64 rawMidiRoom(int descriptor)
{
#ifdef __linux__
    snd_rawmidi_status status = {};
    status.stream = SNDRV_RAWMIDI_STREAM_OUTPUT;
    if (ioctl(descriptor, SNDRV_RAWMIDI_IOCTL_STATUS, &status) == 0)
        return qint64(status.avail);
#else
    Q_UNUSED(descriptor)
#endif
    return 0;
}

qint64 terminalBytesWaiting(int descriptor)
{
    return byteCount(descriptor, TIOCOUTQ);
}

qint64 fifoBytesWaiting(int descriptor)
{
    return byteCount(descriptor, FIONREAD);
}

void reserveTerminal(int descriptor)
{
    if (!isPseudoTerminal(descriptor))
        ioctl(descriptor, TIOCEXCL);
}

void releaseTerminal(int descriptor)
{
    if (!isPseudoTerminal(descriptor))
        ioctl(descriptor, TIOCNXCL);
}

} // namespace hx
