#include "host/product/PluginLoader.h"

#include "tests/host/TestFiles.h"
#include "tests/support/QtPrinting.h"

#include <QDir>
#include <QFileInfo>
#include <QLibrary>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace hx;

namespace {

const QString pluginFile = QStringLiteral(HX_PLUGIN_FILE);
const QString suffix = QStringLiteral(HX_MODULE_SUFFIX);

QString badPlugin(const QString& name)
{
    return QStringLiteral(HX_BAD_PLUGIN_FOLDER) + "/lib" + name + suffix;
}

// A file whose metadata is good, so that nothing but what a test changes in it keeps its code from
// running.
QString pluginThatMarks()
{
    return badPlugin("NoDeviceInterface");
}

class PluginLoaderTest : public testing::Test {
protected:
    PluginLoaderTest() { qunsetenv("HX_BAD_PLUGIN_RAN"); }

    // Expects that `path` is refused for `fault`, in one line that names it.
    void expectRefused(const QString& path, PluginFault fault)
    {
        const PluginLoadResult result = loadPlugin(path);
        EXPECT_FALSE(result.ok());
        EXPECT_EQ(static_cast<int>(result.fault), static_cast<int>(fault))
            << result.problem.what.toStdString();
        EXPECT_TRUE(result.problem.what.contains(path)) << result.problem.what.toStdString();
        EXPECT_FALSE(result.problem.what.contains('\n'));
        EXPECT_EQ(result.problem.code, ExitCode::NoPlugin);
        EXPECT_FALSE(result.problem.expected.isEmpty());
        EXPECT_FALSE(result.problem.next.isEmpty());
        error = result.problem.what;
    }

    static bool codeRan() { return qEnvironmentVariableIsSet("HX_BAD_PLUGIN_RAN"); }

    TestFiles files;
    QString error;
};

} // namespace

TEST_F(PluginLoaderTest, LoadsThePluginFromItsFile)
{
    const PluginLoadResult result = loadPlugin(pluginFile);
    ASSERT_TRUE(result.ok()) << result.problem.what.toStdString();
    EXPECT_EQ(result.fault, PluginFault::None);
    EXPECT_TRUE(result.problem.what.isEmpty());
    EXPECT_EQ(result.plugin->device().productName(), "Valdrin");
    EXPECT_EQ(result.plugin->device().fidpid(), 0x300041u);
    EXPECT_EQ(result.plugin->interfaceId(), "com.tarv.qtio.DeviceInterface.ValdrinBootInterface");
    EXPECT_EQ(result.plugin->className(), "ValdrinBootInterface");
    EXPECT_EQ(result.plugin->keys(), QStringList({"bootValdrinPlugin"}));
    EXPECT_EQ(result.plugin->object().metaObject()->className(),
              QByteArray("ValdrinBootInterface"));
    EXPECT_EQ(QFileInfo(result.plugin->filePath()), QFileInfo(pluginFile));
}

TEST_F(PluginLoaderTest, LoadsTheOnlyPluginOfAFolderAndPassesOverOtherFiles)
{
    files.copy(pluginFile, "libtarv_valdrinboot_3041" + suffix);
    files.copy(badPlugin("NoMetadata"), "libother" + suffix);
    files.write("readme.txt", "text");
    const PluginLoadResult result = loadPlugin(files.folder());
    ASSERT_TRUE(result.ok()) << result.problem.what.toStdString();
    EXPECT_EQ(result.plugin->device().nickName(), "MyValdrinBoot");
    EXPECT_FALSE(codeRan());
}

TEST_F(PluginLoaderTest, UnloadsTheObjectWithTheLibrary)
{
    PluginLoadResult result = loadPlugin(pluginFile);
    ASSERT_TRUE(result.ok());
    bool destroyed = false;
    QObject::connect(&result.plugin->object(), &QObject::destroyed, [&] { destroyed = true; });
    result.plugin.reset();
    EXPECT_TRUE(destroyed);
}

TEST_F(PluginLoaderTest, LoadsAgainAfterUnloading)
{
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(loadPlugin(pluginFile).ok());
}

TEST_F(PluginLoaderTest, RefusesAMissingFile)
{
    expectRefused(files.path("nothing" + suffix), PluginFault::Missing);
}

TEST_F(PluginLoaderTest, RefusesAnEmptyPath)
{
    expectRefused(QString(), PluginFault::Missing);
}

TEST_F(PluginLoaderTest, RefusesAZeroLengthFile)
{
    expectRefused(files.write("empty" + suffix, QByteArray()), PluginFault::NotALibrary);
}

TEST_F(PluginLoaderTest, RefusesATextFileWhateverItsName)
{
    expectRefused(files.write("text" + suffix, "This is a text."), PluginFault::NotALibrary);
}

// Opening a pipe to which nobody writes would wait for ever.
TEST_F(PluginLoaderTest, RefusesAPipeUnread)
{
    const QString pipe = files.path("pipe" + suffix);
    ASSERT_EQ(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    expectRefused(pipe, PluginFault::NotALibrary);
}

TEST_F(PluginLoaderTest, RefusesALibraryWithoutMetadata)
{
    expectRefused(badPlugin("NoMetadata"), PluginFault::NoMetadata);
    EXPECT_FALSE(codeRan());
}

TEST_F(PluginLoaderTest, RefusesATruncatedLibraryAtAnyLength)
{
    const QByteArray whole = TestFiles::contentOf(pluginThatMarks());
    const int elfHeader = 64;
    for (int length = 4; length < whole.size(); length += length < elfHeader ? 1 : 997)
        expectRefused(files.write("cut" + suffix, whole.left(length)), PluginFault::NoMetadata);
    expectRefused(files.write("cut" + suffix, whole.left(whole.size() - 1)),
                  PluginFault::NoMetadata);
    expectRefused(files.write("cut" + suffix, whole.left(3)), PluginFault::NotALibrary);
    EXPECT_FALSE(codeRan());
}

#ifdef Q_OS_LINUX
TEST_F(PluginLoaderTest, RefusesALibraryOfAnotherWordSize)
{
    const int classAt = 4; // of the ELF header: 1 for 32 bits, 2 for 64
    QByteArray other = TestFiles::contentOf(pluginThatMarks());
    other[classAt] = other.at(classAt) == 1 ? 2 : 1;
    expectRefused(files.write("other" + suffix, other), PluginFault::NoMetadata);
    EXPECT_TRUE(error.contains("architecture") || error.contains("word size"))
        << error.toStdString();
    EXPECT_FALSE(codeRan());
}
#endif

TEST_F(PluginLoaderTest, RefusesAPluginForAnotherQtVersion)
{
    // Before the version: the name of an ELF note in Qt 6, the mark of a section in Qt 5.
    const QByteArray metadataMark =
        QT_VERSION_MAJOR == 6 ? QByteArray("qt-project!", 12) : QByteArray("QTMETADATA !");
    QByteArray other = TestFiles::contentOf(pluginThatMarks());
    const auto majorAt = other.lastIndexOf(metadataMark) + metadataMark.size() + 1;
    ASSERT_EQ(static_cast<int>(other.at(majorAt)), QT_VERSION_MAJOR);
    other[majorAt] = static_cast<char>(QT_VERSION_MAJOR + 1);
    expectRefused(files.write("other" + suffix, other), PluginFault::OtherQt);
    EXPECT_TRUE(error.contains("Qt")) << error.toStdString();
    EXPECT_FALSE(codeRan());
}

TEST_F(PluginLoaderTest, RefusesAnotherInterfaceBeforeAnyOfItsCodeRuns)
{
    expectRefused(badPlugin("OtherInterface"), PluginFault::WrongInterface);
    EXPECT_TRUE(error.contains("\"org.example.OtherInterface\"")) << error.toStdString();
    EXPECT_TRUE(error.endsWith(", not for \"com.tarv.qtio.DeviceInterface.\""))
        << error.toStdString();
    EXPECT_FALSE(codeRan());
}

TEST_F(PluginLoaderTest, RefusesAnotherVersionOfTheInterfaceBeforeAnyOfItsCodeRuns)
{
    expectRefused(badPlugin("OtherInterfaceVersion"), PluginFault::WrongInterface);
    EXPECT_TRUE(error.contains("DeviceInterface/2.0")) << error.toStdString();
    EXPECT_FALSE(codeRan());
}

TEST_F(PluginLoaderTest, RefusesAnotherVersionOfTheInterfaceThatTheMetadataHides)
{
    expectRefused(badPlugin("OtherVersionInside"), PluginFault::NoDeviceInterface);
}

TEST_F(PluginLoaderTest, RefusesTheInterfaceIdentifierWithoutAPluginNameBehindIt)
{
    expectRefused(badPlugin("BareInterface"), PluginFault::WrongInterface);
    EXPECT_FALSE(codeRan());
}

TEST_F(PluginLoaderTest, RefusesMetadataWithoutKeysBeforeAnyCodeRuns)
{
    expectRefused(badPlugin("NoKeys"), PluginFault::NoKeys);
    EXPECT_FALSE(codeRan());
}

TEST_F(PluginLoaderTest, RefusesAPluginWithAnUnresolvedSymbol)
{
    expectRefused(badPlugin("UnresolvedSymbol"), PluginFault::LoadFailed);
    EXPECT_TRUE(error.contains("definedNowhere")) << error.toStdString();
    EXPECT_FALSE(codeRan());
}

TEST_F(PluginLoaderTest, RefusesAnObjectThatIsNoDeviceInterface)
{
    expectRefused(badPlugin("NoDeviceInterface"), PluginFault::NoDeviceInterface);
    EXPECT_TRUE(codeRan());
}

// What the other tests rely on when they say that no code ran.
TEST_F(PluginLoaderTest, EveryBadPluginThatCanBeLoadedMarksThatItsCodeRan)
{
    for (const char* name : {"BareInterface", "NoDeviceInterface", "NoKeys", "NoMetadata",
                             "OtherInterface", "OtherInterfaceVersion", "OtherVersionInside"}) {
        qunsetenv("HX_BAD_PLUGIN_RAN");
        // A copy: what an earlier test loaded may still be in memory, and does not run again.
        QLibrary library(files.copy(badPlugin(name), name + suffix));
        EXPECT_TRUE(library.load()) << name << ": " << library.errorString().toStdString();
        EXPECT_TRUE(codeRan()) << name;
        library.unload();
    }
}

TEST_F(PluginLoaderTest, RefusesAnEmptyFolder)
{
    expectRefused(files.folder(), PluginFault::NoneInFolder);
    EXPECT_TRUE(error.contains("it holds no library")) << error.toStdString();
}

TEST_F(PluginLoaderTest, SaysOfAFolderWithoutAPluginWhyEachLibraryIsNone)
{
    files.copy(badPlugin("NoMetadata"), "liba" + suffix);
    files.copy(badPlugin("OtherInterface"), "libb" + suffix);
    expectRefused(files.folder(), PluginFault::NoneInFolder);
    EXPECT_TRUE(error.contains("liba")) << error.toStdString();
    EXPECT_TRUE(error.contains("libb")) << error.toStdString();
    EXPECT_FALSE(codeRan());
}

TEST_F(PluginLoaderTest, NamesOnlyTheFirstOfManyLibraries)
{
    for (const char* name : {"liba", "libb", "libc", "libd", "libe"})
        files.write(name + suffix, "no library");
    expectRefused(files.folder(), PluginFault::NoneInFolder);
    EXPECT_TRUE(error.contains("libc")) << error.toStdString();
    EXPECT_FALSE(error.contains("libd")) << error.toStdString();
    EXPECT_TRUE(error.endsWith("; 2 more libraries are not plugins either")) << error.toStdString();
}

TEST_F(PluginLoaderTest, LoadsFromAFolderNamedFromTheWorkingDirectory)
{
    files.copy(pluginFile, "liba" + suffix);
    const QString folder = QDir::current().relativeFilePath(files.folder());
    ASSERT_TRUE(QFileInfo(folder).isRelative());
    EXPECT_TRUE(loadPlugin(folder).plugin) << folder.toStdString();
}

TEST_F(PluginLoaderTest, DoesNotGuessBetweenTwoPluginsOfAFolder)
{
    files.copy(pluginFile, "liba" + suffix);
    files.copy(pluginFile, "libb" + suffix);
    expectRefused(files.folder(), PluginFault::SeveralInFolder);
    EXPECT_TRUE(error.contains("liba" + suffix)) << error.toStdString();
    EXPECT_TRUE(error.contains("libb" + suffix)) << error.toStdString();
}
