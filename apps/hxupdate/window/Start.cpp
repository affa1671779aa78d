#include "apps/hxupdate/window/Start.h"

#include "apps/hxupdate/model/LoginSleepGuard.h"
#include "apps/hxupdate/model/MachinePorts.h"
#include "apps/hxupdate/model/SimulatorPorts.h"
#include "apps/hxupdate/window/Arguments.h"
#include "apps/hxupdate/window/Language.h"
#include "apps/hxupdate/window/UpdateWindow.h"

#include "host/base/FileName.h"

#include <QApplication>
#include <QIcon>

#include <algorithm>
#include <csignal>
#include <cstring>

namespace hxupdate {

namespace {

void nameProgram()
{
    QCoreApplication::setOrganizationName(QStringLiteral("tarv"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("tarv.com"));
    QCoreApplication::setApplicationName(QStringLiteral("hxupdate"));
    QCoreApplication::setApplicationVersion(QStringLiteral(HXUPDATE_VERSION));
}

// A record that the disk or a limit has no room for is told, and ends nothing.
void ignoreFileSizeLimit()
{
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN);
#endif
}

// Qt has an option of the same name, and would take it away with its value.
const char pluginOption[] = "--plugin";
char hiddenPluginOption[] = "--device-plugin";

void hidePluginOption(int argc, char** argv)
{
    for (int i = 0; i < argc; ++i) {
        if (std::strcmp(argv[i], pluginOption) == 0)
            argv[i] = hiddenPluginOption;
    }
}

// What Qt leaves for us, byte for byte: names of files need not be text.
QStringList wordsOf(int argc, char** argv)
{
    QStringList words;
    for (int i = 0; i < argc; ++i)
        words << hx::fileNameText(argv[i] == hiddenPluginOption ? pluginOption : argv[i]);
    return words;
}

// Help and version are also printed where there is no screen.
bool asksForText(int argc, char** argv)
{
    return std::any_of(argv, argv + argc, [](const char* word) {
        const char* const words[] = {"-h", "--help", "--help-all", "-v", "--version"};
        return std::any_of(std::begin(words), std::end(words),
                           [word](const char* known) { return std::strcmp(word, known) == 0; });
    });
}

Surroundings surroundingsOf(const Arguments& arguments)
{
    Surroundings surroundings;
    surroundings.pluginPlace = arguments.pluginPlace;
    surroundings.sleep = std::make_unique<LoginSleepGuard>();
    if (arguments.isSimulated) {
        surroundings.ports = std::make_unique<SimulatorPorts>(arguments.pluginPlace);
        surroundings.pickedPort = surroundings.ports->list().value(0);
    } else {
        surroundings.ports = std::make_unique<MachinePorts>();
    }
    return surroundings;
}

int runWindow(QApplication& application, const Arguments& arguments)
{
    QGuiApplication::setDesktopFileName(QStringLiteral("com.tarv.hxupdate"));
    speak(application, QLocale::system());
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/hxupdate.svg")));
    UpdateModel model(surroundingsOf(arguments));
    UpdateWindow window(model, arguments.isSimulated);
    window.show();
    window.startLooking();
    if (!arguments.image.isEmpty())
        model.takeFile(arguments.image);
    return QApplication::exec();
}

} // namespace

int start(int argc, char** argv)
{
    nameProgram();
    ignoreFileSizeLimit();
    if (asksForText(argc, argv)) {
        const QCoreApplication application(argc, argv);
        readArguments(wordsOf(argc, argv));
        return 0;
    }
    hidePluginOption(argc, argv);
    QApplication application(argc, argv);
    return runWindow(application, readArguments(wordsOf(argc, argv)));
}

} // namespace hxupdate
