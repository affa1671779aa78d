// A plugin of the other major version of Qt is told by its file, before any of its code runs.
#include "host/product/PluginQtVersion.h"
#include "host/product/PluginLoader.h"
#include "tests/host/TestFiles.h"
#include "tests/support/QtPrinting.h"

#include <QProcess>

#include <gtest/gtest.h>

using namespace hx;

namespace {

const QString librarySuffix = QStringLiteral(HX_MODULE_SUFFIX);
const QString pluginOfThisQt =
    QStringLiteral(HX_BAD_PLUGIN_FOLDER "/libNoDeviceInterface%1").arg(librarySuffix);

// Where the version stands: after the name of an ELF note (Qt 6) or the mark of a section (Qt 5).
const QByteArray noteName("qt-project!\0", 12);
const QByteArray sectionMark("QTMETADATA !");
constexpr int markSize = 12;

class PluginQtVersion : public testing::Test {
protected:
    PluginQtVersion() { qunsetenv("HX_BAD_PLUGIN_RAN"); }
    ~PluginQtVersion() override { EXPECT_FALSE(qEnvironmentVariableIsSet("HX_BAD_PLUGIN_RAN")); }

    // A real plugin that was built with the other Qt.
    static QString otherPlugin() { return QStringLiteral(HX_OTHER_QT_PLUGIN); }
    static int otherMajor() { return QT_VERSION_MAJOR == 5 ? 6 : 5; }
    static QByteArray otherMark() { return otherMajor() == 6 ? noteName : sectionMark; }

    // The text that names both versions; the minor one of the other Qt is what its file says.
    static QString bothVersions(const QByteArray& file)
    {
        const int mark = int(file.lastIndexOf(otherMark()));
        return QString("is made for Qt %1.%2, this host runs Qt %3")
            .arg(otherMajor())
            .arg(int(file.at(mark + markSize + 2)))
            .arg(QString(qVersion()).section('.', 0, 1));
    }

    static void expectRefused(const QString& path, PluginFault fault, const QString& text)
    {
        const PluginLoadResult result = loadPlugin(path);
        EXPECT_FALSE(result.ok());
        EXPECT_EQ(int(result.fault), int(fault)) << result.problem.what.toStdString();
        EXPECT_TRUE(result.problem.what.contains(text)) << result.problem.what.toStdString();
    }

    TestFiles files;
};

#define SKIP_WITHOUT_OTHER_QT()                                                                    \
    if (otherPlugin().isEmpty())                                                                   \
    GTEST_SKIP() << "Qt " << otherMajor() << " is not installed: scripts/setup --qt" << otherMajor()

} // namespace

TEST_F(PluginQtVersion, APluginOfTheOtherMajorIsRefusedWithBothVersions)
{
    SKIP_WITHOUT_OTHER_QT();
    const QByteArray file = TestFiles::contentOf(otherPlugin());
    expectRefused(otherPlugin(), PluginFault::OtherQt, bothVersions(file));
    const Problem problem = loadPlugin(otherPlugin()).problem;
    EXPECT_EQ(problem.expected, "a plugin made for the same major version of Qt");
    EXPECT_EQ(problem.next, "install that one, or use a host made for the plugin's Qt");
}

TEST_F(PluginQtVersion, AFolderWithNothingElseSaysSo)
{
    SKIP_WITHOUT_OTHER_QT();
    files.copy(otherPlugin(), "libother" + librarySuffix);
    expectRefused(files.folder(), PluginFault::NoneInFolder,
                  bothVersions(TestFiles::contentOf(otherPlugin())));
}

TEST_F(PluginQtVersion, AStrippedPluginOfTheOtherMajorIsKnown)
{
    SKIP_WITHOUT_OTHER_QT();
    const QString stripped = files.copy(otherPlugin(), "libstripped" + librarySuffix);
    ASSERT_EQ(QProcess::execute("strip", {stripped}), 0);
    const QByteArray file = TestFiles::contentOf(stripped);
    EXPECT_LT(file.size(), TestFiles::contentOf(otherPlugin()).size());
    expectRefused(stripped, PluginFault::OtherQt, bothVersions(file));
}

TEST_F(PluginQtVersion, AMarkThatIsOverwrittenIsNoMetadata)
{
    SKIP_WITHOUT_OTHER_QT();
    QByteArray file = TestFiles::contentOf(otherPlugin());
    file.replace(otherMark(), QByteArray(markSize, 'x'));
    expectRefused(files.write("libnomark" + librarySuffix, file), PluginFault::NoMetadata,
                  "carries no plugin metadata");
}

TEST_F(PluginQtVersion, MetadataThatIsCutShortIsNoMetadata)
{
    SKIP_WITHOUT_OTHER_QT();
    const QByteArray file = TestFiles::contentOf(otherPlugin());
    const int mark = int(file.lastIndexOf(otherMark()));
    ASSERT_GT(mark, 0);
    const int mapAt = mark + markSize + 4;
    for (int length = mark; length <= mapAt; ++length)
        expectRefused(files.write("libcut" + librarySuffix, file.left(length)),
                      PluginFault::NoMetadata, "carries no plugin metadata");
    expectRefused(files.write("libcut" + librarySuffix, file.left(mapAt + 1)), PluginFault::OtherQt,
                  bothVersions(file));
}

TEST_F(PluginQtVersion, ANameThatIsInNoNoteSaysNothing)
{
    const QByteArray version = QByteArray::fromHex("010604A0BF"); // what follows the name of a note
    const auto versionIn = [&](const QByteArray& bytes) {
        return qtVersionOfPlugin({}, files.write("bytes", bytes));
    };
    EXPECT_FALSE(versionIn(noteName + version));
    EXPECT_FALSE(versionIn(QByteArray(4, '\x01') + noteName + version));
    for (const char* type : {"01005174", "74510001"}) { // in either order of bytes
        const auto found = versionIn(QByteArray::fromHex(type) + noteName + version);
        ASSERT_TRUE(found.has_value());
        EXPECT_EQ(found->text(), "6.4");
    }
}

TEST_F(PluginQtVersion, TheMarkOfASectionIsThatOfMetadataOnlyWithItsMap)
{
    const auto versionIn = [&](const char* behind) {
        return qtVersionOfPlugin(
            {}, files.write("bytes", "QTMETADATA  " + sectionMark + QByteArray::fromHex(behind)));
    };
    for (const char* whole : {"00050FA0BF", "00050FA0A3"}) // a map of any, or of a stated, length
        EXPECT_EQ(versionIn(whole).value_or(QtVersion()).text(), "5.15");
    for (const char* other : {"", "00050FA0", "00050FA0C0", "00040FA0BF"})
        EXPECT_FALSE(versionIn(other)) << other;
}

TEST_F(PluginQtVersion, MetadataThatQtHasReadIsNotSoughtAgain)
{
    const QJsonObject metaData{{"version", 0x060402}};
    EXPECT_EQ(qtVersionOfPlugin(metaData, pluginOfThisQt).value_or(QtVersion()).text(), "6.4");
}

TEST_F(PluginQtVersion, AFileThatCannotBeReadSaysNothing)
{
    EXPECT_FALSE(qtVersionOfPlugin({}, files.path("nothing")));
}
