#include "apps/hxhost/report/Terminal.h"

#include <QByteArray>
#include <QtGlobal>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace hx {

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

int columnsOfDevice()
{
#ifdef Q_OS_WIN
    return 0;
#else
    winsize size = {};
    return ioctl(2, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
#endif
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

int terminalColumns()
{
    const int device = columnsOfDevice();
    if (device > 0)
        return device;
    const int named = qEnvironmentVariableIntValue("COLUMNS");
    return named > 0 ? named : 80;
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

} // namespace hx
