// The library as Qt's plugin loader sees it: metadata, the single instance, the casts.
#include "tests/plugin/LoadedPlugin.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QPointer>

TEST(LibraryMetadata, isReadableWithoutLoadingTheLibrary)
{
    const QPluginLoader loader(QStringLiteral(HX_PLUGIN_FILE));
    const QJsonObject metaData = loader.metaData();
    EXPECT_EQ(metaData.value("IID").toString(),
              "com.tarv.qtio.DeviceInterface.ValdrinBootInterface");
    EXPECT_EQ(metaData.value("className").toString(), "ValdrinBootInterface");
    const QJsonObject own{{"Keys", QJsonArray{"bootValdrinPlugin"}}};
    EXPECT_EQ(metaData.value("MetaData").toObject(), own);
    EXPECT_FALSE(loader.isLoaded());
}

TEST_F(LoadedPlugin, everyLoaderGetsTheSameObject)
{
    UnloadingLoader second(QStringLiteral(HX_PLUGIN_FILE));
    EXPECT_EQ(second.instance(), loader.instance());
    EXPECT_EQ(loader.instance(), loader.instance());
    second.unload();
}

TEST_F(LoadedPlugin, aDestroyedObjectIsReplacedByAFreshOne)
{
    QPointer<QObject> first = loader.instance();
    device->setLastError(QStringLiteral("old"));
    delete first.data();
    EXPECT_TRUE(first.isNull());

    QObject* const second = loader.instance();
    ASSERT_NE(second, nullptr);
    auto* fresh = qobject_cast<DeviceInterface*>(second);
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(fresh->bus, nullptr);
    EXPECT_TRUE(fresh->lastError.isEmpty());
    EXPECT_EQ(fresh->lookupStr("reset"), "F0006B2D30411B0958F7");
    EXPECT_EQ(loader.instance(), second);
}

// Texts that lie in the library's own memory would be gone with it.
TEST(UnloadedLibrary, leavesTheTextsThatItsHostKept)
{
    FakeBus bus;
    UnloadingLoader loader(QStringLiteral(HX_PLUGIN_FILE));
    auto* const device = qobject_cast<DeviceInterface*>(loader.instance());
    ASSERT_NE(device, nullptr);
    device->bus = &bus;
    const QStringList names{device->classVersion(), device->productName(),
                            device->productPortName(), device->lookupStr("reset")};
    const QMap<unsigned int, QString> nameOfIdentifier = device->getFidPidNameMap();
    const QMap<QString, unsigned int> identifierOfName = device->getNameFidPidMap();
    const FwUpdateProtocol protocol = device->getUpdateProtocol(
        "x", {HxMidiData("F0 00 6B 2D 30 41 43 F7"), HxMidiData("F0 00 6B 2D 30 41 F7")});
    device->versionNumber();
    ASSERT_TRUE(loader.unload());

    EXPECT_EQ(names, (QStringList{"0.0.0.1", "Valdrin", "Valdrin Update", "F0006B2D30411B0958F7"}));
    EXPECT_EQ(nameOfIdentifier.value(0x300041), "ValdrinBoot");
    EXPECT_EQ(identifierOfName.value("ValdrinBoot"), 0x300041U);
    EXPECT_TRUE(protocol.responseGood.rx.exactMatch("F0006B2D3041430C00F7"));
    EXPECT_EQ(bus.exchanges.first().pattern, "F0 7E .. 06 02 00 6B 2D 30 00 41 00 .. .. .. .. F7");
}

TEST_F(LoadedPlugin, castsByClassNameAndByInterfaceIdentifierYieldTheSamePart)
{
    QObject* const object = loader.instance();
    EXPECT_EQ(object->qt_metacast("DeviceInterface"), device);
    EXPECT_EQ(object->qt_metacast("com.tarv.qtio.DeviceInterface"), device);
    EXPECT_EQ(object->qt_metacast("ValdrinBootInterface"), object);
    EXPECT_TRUE(object->inherits("QObject"));
    EXPECT_EQ(object->qt_metacast("com.tarv.qtio.OtherInterface"), nullptr);
    EXPECT_EQ(object->parent(), nullptr);
}

TEST_F(LoadedPlugin, defaultsOfTheContractAnswerThroughTheInterface)
{
    EXPECT_TRUE(device->hasBootcode());
    EXPECT_TRUE(device->lastProgrammingMsg().bytes.isEmpty());
    EXPECT_EQ(device->productInPortName(), device->productPortName());
    EXPECT_EQ(device->productOutPortName(), device->productPortName());
    EXPECT_EQ(device->rawFidpid(), device->fidpid());
}

TEST_F(LoadedPlugin, aMissingKeyIsLoggedFromTheLibraryToo)
{
    EXPECT_FALSE(device->lookup("get.esn.cmd").isValid());
    EXPECT_EQ(log.texts(), QStringList{"ERROR: Missing MIDI Protocol for key:  \"get.esn.cmd\""});
}
