// Runs the tests in a Qt program without a screen, whose settings are its own.
#include "apps/hxupdate/window/Language.h"

#include "tests/support/LeakCheckPause.h"

#include <QApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace {

// Qt's platform without a screen never frees the screen that it does not have.
std::unique_ptr<QApplication> newApplication(int& argc, char** argv)
{
    const LeakCheckPause pause;
    return std::make_unique<QApplication>(argc, argv);
}

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    testing::InitGoogleTest(&argc, argv);
    const std::unique_ptr<QApplication> application = newApplication(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("tarv"));
    QCoreApplication::setApplicationName(QStringLiteral("test_hxupdate"));
    hxupdate::speak(*application, QLocale(QStringLiteral("en_US")));
    return RUN_ALL_TESTS();
}
