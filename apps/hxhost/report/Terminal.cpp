#include "apps/hxhost/report/Terminal.h"

#include <QFile>
#include <QtGlobal>

#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/select.h>
#include <termios.h>
#include <unistd.h>
#endif

namespace hx::host {

namespace {

bool isDumb()
{
    return qgetenv("TERM") == "dumb";
}

bool isTerminal(int descriptor)
{
#ifdef Q_OS_WIN
    return _isatty(descriptor) != 0;
#else
    return isatty(descriptor) != 0;
#endif
}

// -1 at the end of input. Nothing is read ahead, so that what was typed is never out of sight.
int readInputByte(int input)
{
    char byte = 0;
#ifdef Q_OS_WIN
    return _read(input, &byte, 1) == 1 ? byte : -1;
#else
    return read(input, &byte, 1) == 1 ? quint8(byte) : -1;
#endif
}

// Waits a moment for a line; whoever asks may look in between whether to go on.
bool inputIsReady(int input)
{
#ifdef Q_OS_WIN
    return input >= 0;
#else
    fd_set inputs;
    FD_ZERO(&inputs);
    FD_SET(input, &inputs);
    timeval moment = {0, 50000};
    return select(input + 1, &inputs, nullptr, nullptr, &moment) > 0;
#endif
}

QByteArray readLineFrom(int input, const std::atomic<bool>& interrupted)
{
    QByteArray line;
    while (!interrupted) {
        if (!inputIsReady(input))
            continue;
        const int typed = readInputByte(input);
        if (typed < 0)
            return line;
        if (typed == '\n')
            return line.isNull() ? QByteArray("") : line;
        line += char(typed);
    }
    return QByteArray();
}

#ifndef Q_OS_WIN
// The terminal of the program, which shows nothing of what is typed as long as this lives.
class HiddenTerminal {
public:
    HiddenTerminal() : m_device(open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        if (m_device < 0 || tcgetattr(m_device, &m_before) != 0)
            return;
        termios hidden = m_before;
        hidden.c_lflag &= ~tcflag_t(ECHO);
        m_isHidden = tcsetattr(m_device, TCSAFLUSH, &hidden) == 0;
    }
    ~HiddenTerminal()
    {
        if (m_isHidden)
            tcsetattr(m_device, TCSAFLUSH, &m_before);
        if (m_device >= 0)
            close(m_device);
    }
    HiddenTerminal(const HiddenTerminal&) = delete;
    HiddenTerminal& operator=(const HiddenTerminal&) = delete;

    bool isHidden() const { return m_isHidden; }
    int device() const { return m_device; }
    bool write(const QByteArray& text) const
    {
        return ::write(m_device, text.constData(), size_t(text.size())) == text.size();
    }

private:
    int m_device;
    termios m_before{};
    bool m_isHidden = false;
};
#endif

struct TerminalSize {
    int columns = 0; // 0: not known
    int rows = 0;
};

TerminalSize sizeOfDevice()
{
    TerminalSize found;
#ifndef Q_OS_WIN
    winsize size = {};
    if (ioctl(2, TIOCGWINSZ, &size) == 0)
        found = {size.ws_col, size.ws_row};
#endif
    return found;
}

// What the terminal says, else the variable of the environment, else `usual`.
int sizeOr(int told, const char* variable, int usual)
{
    const int named = qEnvironmentVariableIntValue(variable);
    return told > 0 ? told : named > 0 ? named : usual;
}

} // namespace

bool errorIsTerminal()
{
    return isTerminal(2);
}

bool outputIsTerminal()
{
    return isTerminal(1);
}

bool inputIsTerminal()
{
    return isTerminal(0);
}

bool writeToTerminal(const QByteArray& text)
{
    QFile terminal(QStringLiteral("/dev/tty"));
    return terminal.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
           terminal.write(text) == text.size();
}

QByteArray readTypedLine(const std::atomic<bool>& interrupted)
{
    return readLineFrom(0, interrupted);
}

std::optional<QByteArray> askHidden(const QByteArray& question,
                                    const std::atomic<bool>& interrupted)
{
#ifdef Q_OS_WIN
    return std::nullopt;
#else
    const HiddenTerminal terminal;
    if (!terminal.isHidden() || !terminal.write(question))
        return std::nullopt;
    const QByteArray line = readLineFrom(terminal.device(), interrupted);
    terminal.write("\n"); // the one that was typed is not shown
    return line.isNull() ? std::nullopt : std::optional(line);
#endif
}

int terminalColumns()
{
    return sizeOr(sizeOfDevice().columns, "COLUMNS", 80);
}

int terminalRows()
{
    return sizeOr(sizeOfDevice().rows, "LINES", 24);
}

bool colourAllowed()
{
    if (!qgetenv("NO_COLOR").isEmpty())
        return false;
    const QByteArray forced = qgetenv("CLICOLOR_FORCE");
    if (!forced.isEmpty() && forced != "0")
        return true;
    return errorIsTerminal() && !isDumb();
}

bool lineMayBeRedrawn()
{
    return errorIsTerminal() && !isDumb();
}

} // namespace hx::host
