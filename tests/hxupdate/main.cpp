// Runs the tests in a Qt program without a screen, whose settings are its own.
#include "apps/hxupdate/window/Language.h"

#include <QApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("tarv"));
    QCoreApplication::setApplicationName(QStringLiteral("test_hxupdate"));
    hxupdate::speak(application, QLocale(QStringLiteral("en_US")));
    return RUN_ALL_TESTS();
}
