#include "apps/hxupdate/window/Language.h"

#include <QCoreApplication>
#include <QTranslator>

// A static library's resources are there once somebody asks for them, outside of any namespace.
static void readyResources()
{
    Q_INIT_RESOURCE(hxupdate);
}

namespace hxupdate {

void speak(QCoreApplication& application, const QLocale& locale)
{
    readyResources();
    const QString folder = QStringLiteral(":/translations");
    const QString english = folder + QStringLiteral("/hxupdate_en.qm");
    qDeleteAll(application.findChildren<QTranslator*>());
    QLocale::setDefault(locale);
    auto* translator = new QTranslator(&application);
    const bool isLoaded =
        translator->load(locale, QStringLiteral("hxupdate"), QStringLiteral("_"), folder) ||
        translator->load(english);
    Q_ASSERT(isLoaded); // English is compiled in
    Q_UNUSED(isLoaded)
    QCoreApplication::installTranslator(translator);
}

} // namespace hxupdate
