#include "apps/hxhost/report/Terminal.h"

#include <QFile>
#include <QtGlobal>

#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <sys/ioctl.h>
#include <sys/select.h>
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
int readInputByte()
{
    char byte = 0;
#ifdef Q_OS_WIN
    return _read(0, &byte, 1) == 1 ? byte : -1;
#else
    return read(STDIN_FILENO, &byte, 1) == 1 ? quint8(byte) : -1;
#endif
}

// Waits a moment for a line; whoever asks may look in between whether to go on.
bool inputIsReady()
{
#ifdef Q_OS_WIN
    return true;
#else
    fd_set inputs;
    FD_ZERO(&inputs);
    FD_SET(STDIN_FILENO, &inputs);
    timeval moment = {0, 50000};
    return select(STDIN_FILENO + 1, &inputs, nullptr, nullptr, &moment) > 0;
#endif
}

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
    QByteArray line;
    while (!interrupted) {
        if (!inputIsReady())
            continue;
        const int typed = readInputByte();
        if (typed < 0)
            return line;
        if (typed == '\n')
            return line.isNull() ? QByteArray("") : line;
        line += char(typed);
    }
    return QByteArray();
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
