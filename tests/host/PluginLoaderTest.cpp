#include "host/PluginLoader.h"

#include "tests/host/TestFiles.h"
#include "tests/support/QtPrinting.h"

#include <QFileInfo>

#include <gtest/gtest.h>

using namespace hx;

namespace {

const QString pluginFile = QStringLiteral(HX_PLUGIN_FILE);
const QString suffix = QStringLiteral(HX_MODULE_SUFFIX);

QString badPlugin(const QString& name)
{
    return QStringLiteral(HX_BAD_PLUGIN_FOLDER) + "/lib" + name + suffix;
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
            << result.error.toStdString();
        EXPECT_TRUE(result.error.contains(path)) << result.error.toStdString();
        EXPECT_FALSE(result.error.contains('\n'));
        error = result.error;
    }

    static bool codeRan() { return qEnvironmentVariableIsSet("HX_BAD_PLUGIN_RAN"); }

    TestFiles files;
    QString error;
};

} // namespace

TEST_F(PluginLoaderTest, LoadsThePluginFromItsFile)
{
    const PluginLoadResult result = loadPlugin(pluginFile);
    ASSERT_TRUE(result.ok()) << result.error.toStdString();
    EXPECT_EQ(result.fault, PluginFault::None);
    EXPECT_TRUE(result.error.isEmpty());
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
    ASSERT_TRUE(result.ok()) << result.error.toStdString();
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

TEST_F(PluginLoaderTest, RefusesALibraryWithoutMetadata)
{
    expectRefused(badPlugin("NoMetadata"), PluginFault::NoMetadata);
    EXPECT_FALSE(codeRan());
}

TEST_F(PluginLoaderTest, RefusesATruncatedLibraryAtAnyLength)
{
    const QByteArray whole = TestFiles::contentOf(pluginFile);
    for (int percent : {1, 10, 50, 90, 99}) {
        const QByteArray part = whole.left(whole.size() / 100 * percent);
        expectRefused(files.write(QString("cut%1").arg(percent) + suffix, part),
                      PluginFault::NoMetadata);
    }
}

TEST_F(PluginLoaderTest, RefusesAnotherInterfaceBeforeAnyOfItsCodeRuns)
{
    expectRefused(badPlugin("OtherInterface"), PluginFault::WrongInterface);
    EXPECT_TRUE(error.contains("\"org.example.OtherInterface\"")) << error.toStdString();
    EXPECT_TRUE(error.contains("\"com.tarv.qtio.DeviceInterface.\"")) << error.toStdString();
    EXPECT_FALSE(codeRan());
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
}

TEST_F(PluginLoaderTest, RefusesAnObjectThatIsNoDeviceInterface)
{
    expectRefused(badPlugin("NoDeviceInterface"), PluginFault::NoDeviceInterface);
    EXPECT_TRUE(codeRan());
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

TEST_F(PluginLoaderTest, DoesNotGuessBetweenTwoPluginsOfAFolder)
{
    files.copy(pluginFile, "liba" + suffix);
    files.copy(pluginFile, "libb" + suffix);
    expectRefused(files.folder(), PluginFault::SeveralInFolder);
    EXPECT_TRUE(error.contains("liba" + suffix)) << error.toStdString();
    EXPECT_TRUE(error.contains("libb" + suffix)) << error.toStdString();
}
