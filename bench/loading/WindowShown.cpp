// Shows the window on the simulated product, and ends with its first paint.
#include "apps/hxupdate/window/Language.h"
#include "apps/hxupdate/window/UpdateWindow.h"
#include "bench/loading/SimulatedWindow.h"

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

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    hxupdate::speak(application, QLocale::system());
    hxupdate::UpdateModel model(simulatedSurroundings());
    hxupdate::UpdateWindow window(model, true);
    PaintWatch watch;
    window.installEventFilter(&watch);
    window.show();
    window.startLooking();
    return QApplication::exec();
}
