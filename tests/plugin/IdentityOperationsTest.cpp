// What the plugin object says of itself, without any exchange.
#include "plugin/ValdrinBootInterface.h"
#include "tests/support/QtPrinting.h"

#include <QPointer>

#include <gtest/gtest.h>

#include <type_traits>

TEST(IdentityOperations, namesAndVersionsAreTheProductsOwn)
{
    ValdrinBootInterface plugin;
    EXPECT_EQ(plugin.classVersion(), "0.0.0.1");
    EXPECT_EQ(plugin.productName(), "Valdrin");
    EXPECT_EQ(plugin.nickName(), "MyValdrinBoot");
    EXPECT_EQ(plugin.productPortName(), "Valdrin Update");
    EXPECT_TRUE(plugin.isBootcode());
}

TEST(IdentityOperations, inputAndOutputPortNamesEqualThePortName)
{
    ValdrinBootInterface plugin;
    EXPECT_EQ(plugin.productInPortName(), "Valdrin Update");
    EXPECT_EQ(plugin.productOutPortName(), "Valdrin Update");
}

TEST(IdentityOperations, bothIdentifierWordsAre300041)
{
    ValdrinBootInterface plugin;
    EXPECT_EQ(plugin.fidpid(), 0x300041U);
    EXPECT_EQ(plugin.rawFidpid(), 0x300041U);
}

TEST(IdentityOperations, supportsItsOwnIdentifierOnly)
{
    ValdrinBootInterface plugin;
    EXPECT_TRUE(plugin.canSupport(0x300041));
    for (const unsigned other : {0x3041U, 0U, 0x300040U, 0x300042U, 0x7F007FU, 0xFFFFFFFFU})
        EXPECT_FALSE(plugin.canSupport(other)) << other;
}

TEST(IdentityOperations, canSupportReadsTheSupportedListAndNotTheGenderList)
{
    ValdrinBootInterface plugin;
    plugin.supportedGenders = {0x310042};
    EXPECT_TRUE(plugin.canSupport(0x310042));
    EXPECT_FALSE(plugin.canSupport(0x300041));
    EXPECT_EQ(plugin.getGenderList(), QVector<unsigned int>{0x300041});
}

TEST(IdentityOperations, genderListAndNameMapsHoldOneEntryAndAreInverse)
{
    ValdrinBootInterface plugin;
    EXPECT_EQ(plugin.getGenderList(), QVector<unsigned int>{0x300041});
    const QMap<unsigned int, QString> names{{0x300041, "ValdrinBoot"}};
    const QMap<QString, unsigned int> identifiers{{"ValdrinBoot", 0x300041}};
    EXPECT_EQ(plugin.getFidPidNameMap(), names);
    EXPECT_EQ(plugin.getNameFidPidMap(), identifiers);
}

TEST(IdentityOperations, contractDefaultsAreKept)
{
    ValdrinBootInterface plugin;
    EXPECT_TRUE(plugin.hasBootcode());
    EXPECT_TRUE(plugin.lastProgrammingMsg().bytes.isNull());
    EXPECT_EQ(plugin.bus, nullptr);
    EXPECT_TRUE(plugin.lastError.isEmpty());
    EXPECT_TRUE(plugin.hostText.isEmpty());
    EXPECT_TRUE(plugin.hostMap.isEmpty());
}

TEST(IdentityOperations, membersHaveTheirInitialValues)
{
    ValdrinBootInterface plugin;
    EXPECT_EQ(plugin.fillerText, "0000");
    EXPECT_TRUE(plugin.spareText.isEmpty());
    EXPECT_EQ(plugin.productNameText, "Valdrin");
    EXPECT_EQ(plugin.supportedGenders, QVector<unsigned int>{0x300041});
    EXPECT_EQ(plugin.identity.versionNumber, 0);
    EXPECT_TRUE(plugin.identity.versionText.isNull());
    EXPECT_TRUE(plugin.identity.reply.bytes.isEmpty());
}

TEST(IdentityOperations, theConstructorTakesAnOptionalParentThatDestroysThePlugin)
{
    EXPECT_EQ(ValdrinBootInterface().parent(), nullptr);
    QPointer<ValdrinBootInterface> plugin;
    {
        QObject parent;
        plugin = new ValdrinBootInterface(&parent);
        EXPECT_EQ(plugin->parent(), &parent);
    }
    EXPECT_TRUE(plugin.isNull());
}

TEST(IdentityOperations, productNameReturnsTheMember)
{
    ValdrinBootInterface plugin;
    plugin.productNameText = QStringLiteral("Other");
    EXPECT_EQ(plugin.productName(), "Other");
}

TEST(IdentityOperations, defaultsOfTheContractFollowWhatASubclassOverrides)
{
    class Other : public ValdrinBootInterface {
    public:
        quint32 fidpid() override { return 0x310042; }
        QString productPortName() const override { return QStringLiteral("Other Port"); }
    };
    Other plugin;
    EXPECT_EQ(plugin.rawFidpid(), 0x310042U);
    EXPECT_EQ(plugin.productInPortName(), "Other Port");
    EXPECT_EQ(plugin.productOutPortName(), "Other Port");
}

TEST(IdentityOperations, theNickNameIsALiteralAndNotAllocated)
{
    ValdrinBootInterface plugin;
    const QString first = plugin.nickName();
    EXPECT_EQ(first.constData(), plugin.nickName().constData());
    EXPECT_NE(plugin.classVersion().constData(), plugin.classVersion().constData());
}

TEST(SetLastError, prefixesTheHeaderPathAndLineAndReplacesTheText)
{
    ValdrinBootInterface plugin;
    plugin.setLastError(QStringLiteral("first"));
    EXPECT_EQ(plugin.lastError, "deviceinterface/DeviceInterface.h:322 - first");
    plugin.setLastError(QStringLiteral("%1 second"));
    EXPECT_EQ(plugin.lastError, "deviceinterface/DeviceInterface.h:322 - %1 second");
}

TEST(Casts, eachNameYieldsItsPartOfTheObject)
{
    ValdrinBootInterface plugin;
    void* const asInterface = static_cast<DeviceInterface*>(&plugin);
    EXPECT_EQ(plugin.qt_metacast(nullptr), nullptr);
    EXPECT_EQ(plugin.qt_metacast("ValdrinBootInterface"), &plugin);
    EXPECT_EQ(plugin.qt_metacast("DeviceInterface"), asInterface);
    EXPECT_EQ(plugin.qt_metacast("com.tarv.qtio.DeviceInterface"), asInterface);
    EXPECT_EQ(plugin.qt_metacast("QObject"), static_cast<QObject*>(&plugin));
}

TEST(Casts, unknownNamesAndOtherCaseYieldNull)
{
    ValdrinBootInterface plugin;
    EXPECT_EQ(plugin.qt_metacast("deviceinterface"), nullptr);
    EXPECT_EQ(plugin.qt_metacast("com.tarv.qtio.DeviceInterface.ValdrinBootInterface"), nullptr);
    EXPECT_EQ(plugin.qt_metacast(""), nullptr);
}

TEST(MetaObject, declaresNothingOfItsOwn)
{
    const QMetaObject& meta = ValdrinBootInterface::staticMetaObject;
    EXPECT_STREQ(meta.className(), "ValdrinBootInterface");
    EXPECT_EQ(meta.superClass(), &QObject::staticMetaObject);
    EXPECT_EQ(meta.methodCount(), meta.methodOffset());
    EXPECT_EQ(meta.propertyCount(), meta.propertyOffset());
    EXPECT_EQ(meta.enumeratorCount(), meta.enumeratorOffset());
    EXPECT_EQ(meta.classInfoCount(), meta.classInfoOffset());
}

TEST(Contract, hasNoVirtualDestructor)
{
    EXPECT_FALSE(std::has_virtual_destructor<DeviceInterface>::value);
}
