// Shows the window on the simulated product, and ends with its first paint.
#include "apps/hxupdate/model/LoginSleepGuard.h"
#include "apps/hxupdate/model/SimulatorPorts.h"
#include "apps/hxupdate/window/Language.h"
#include "apps/hxupdate/window/UpdateWindow.h"

#include "host/product/PluginFolder.h"

#include <QApplication>

namespace {

class PaintWatch final : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        return false;
    }
};

hxupdate::Surroundings simulated()
{
    hxupdate::Surroundings surroundings;
    surroundings.pluginPlace = hx::pluginFolder();
    surroundings.ports = std::make_unique<hxupdate::SimulatorPorts>(surroundings.pluginPlace);
    surroundings.sleep = std::make_unique<hxupdate::LoginSleepGuard>();
    surroundings.pickedPort = surroundings.ports->list().first();
    return surroundings;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    hxupdate::speak(application, QLocale::system());
    hxupdate::UpdateModel model(simulated());
    hxupdate::UpdateWindow window(model, true);
    PaintWatch watch;
    window.installEventFilter(&watch);
    window.show();
    window.startLooking();
    return QApplication::exec();
}
