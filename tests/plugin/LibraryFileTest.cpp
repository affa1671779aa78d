// The library file itself: what it is called, what it exports, what Qt's own tool reads from it.
#include "qt/Versions.h"
#include "tests/support/QtPrinting.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace {

const QString pluginFile = QStringLiteral(HX_PLUGIN_FILE);

QString outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished()) << program.toStdString();
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return QString::fromLocal8Bit(process.readAllStandardOutput());
}

} // namespace

TEST(LibraryFile, hasTheNameThatHostsLookFor)
{
    EXPECT_EQ(QFileInfo(pluginFile).completeBaseName(), "libtarv_valdrinboot_3041");
}

TEST(LibraryFile, exportsQtsTwoEntryPointsAndNothingElse)
{
#ifdef __APPLE__
    const QStringList arguments{"-gUj", pluginFile};
#else
    const QStringList arguments{"--dynamic", "--defined-only", "--format=posix", pluginFile};
#endif
    QStringList names;
    const QStringList lines = outputOf("nm", arguments).split('\n');
    for (const QString& line : lines) {
        if (!line.isEmpty())
            names += QString(line.section(' ', 0, 0)).remove(QRegularExpression("^_(?=qt_)"));
    }
    names.sort();
    EXPECT_EQ(names, (QStringList{"qt_plugin_instance", hx::pluginMetadataFunction}));
}

TEST(LibraryFile, qtsOwnToolReadsTheMetadata)
{
    const QString tool = QStandardPaths::findExecutable(
        "qtplugininfo", {QStringLiteral(HX_QT_BINARY_FOLDER), HX_QT_BINARY_FOLDER "/../bin"});
    if (tool.isEmpty())
        GTEST_SKIP()
            << "qtplugininfo is not installed (Debian: qttools5-dev-tools, qt6-tools-dev-tools)";
    const QString text = outputOf(tool, {"--full-json", pluginFile});
    EXPECT_TRUE(text.contains("\"IID\": \"com.tarv.qtio.DeviceInterface.ValdrinBootInterface\""));
    EXPECT_TRUE(text.contains("\"className\": \"ValdrinBootInterface\""));
    EXPECT_TRUE(text.contains(QRegularExpression(
        "\"MetaData\": \\{\\s*\"Keys\": \\[\\s*\"bootValdrinPlugin\"\\s*\\]\\s*\\}")));
}

TEST(LibraryFile, carriesNoPathOfTheBuildMachineInItsErrorTexts)
{
    QFile file(pluginFile);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray content = file.readAll();
    const QString header = QStringLiteral("deviceinterface/DeviceInterface.h:322 - ");
    const QByteArray wide(reinterpret_cast<const char*>(header.utf16()), 2 * header.size());
    EXPECT_TRUE(content.contains(wide));
    const QString absolute = QStringLiteral("/deviceinterface/DeviceInterface.h:322");
    EXPECT_FALSE(content.contains(
        QByteArray(reinterpret_cast<const char*>(absolute.utf16()), 2 * absolute.size())));
}
