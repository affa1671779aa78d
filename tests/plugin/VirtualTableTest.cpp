// The order of the virtual table and of the data members, which hosts built earlier rely on.
#include "tests/plugin/FrozenTable.h"
#include "tests/plugin/LoadedPlugin.h"

#include <cstddef>

// At file scope: of a class in an unnamed namespace the optimiser sees that nobody implements it.
//
// The contract as hosts in the field were compiled with it, written down a second time on purpose:
// this copy never changes. When a test here fails, the header has broken those hosts.
class FrozenContract {
public:
    virtual bool isNak(BusData reply) = 0;
    virtual bool isCodeValid(CodeType code) = 0;
    virtual QString classVersion() = 0;
    virtual bool hasBootcode() const = 0;
    virtual HxMidiData lastProgrammingMsg() const = 0;
    virtual QString esn() = 0;
    virtual QString nickName() = 0;
    virtual QString productPortName() const = 0;
    virtual QString productInPortName() const = 0;
    virtual QString productOutPortName() const = 0;
    virtual QString productName() const = 0;
    virtual qint32 versionNumber() = 0;
    virtual quint32 fidpid() = 0;
    virtual quint32 rawFidpid() = 0;
    virtual bool canSupport(unsigned int identifier) = 0;
    virtual FwUpdateProtocol getUpdateProtocol(QString const& name,
                                               QList<HxMidiData> const& data) = 0;
    virtual void setLastError(QString const& message) = 0;
    virtual QVariant lookup(QString key) const = 0;
    virtual int lookupInt(QString key) const = 0;
    virtual QString lookupStr(QString key) const = 0;
    virtual bool isBootcode() const = 0;
    virtual QVector<unsigned int> getGenderList() const = 0;
    virtual QMap<unsigned int, QString> getFidPidNameMap() const = 0;
    virtual QMap<QString, unsigned int> getNameFidPidMap() const = 0;

    Bus* bus;
    quintptr hostWord;
    QString lastError;
    QString hostText;
    QMap<QString, QVariant> hostMap;

protected:
    ~FrozenContract() = default;
};

namespace {

class VirtualTable : public LoadedPlugin {
protected:
    void SetUp() override
    {
        LoadedPlugin::SetUp();
        frozen = throughFrozenTable<FrozenContract>(device);
    }

    FrozenContract* frozen = nullptr;
};

// A plugin whose operations note their places, counted from 1. Some answers of the real plugin are
// equal (three port names, two identifiers), so they alone would not show that two changed places.
class PlaceProbe : public DeviceInterface {
public:
    bool isNak(BusData) override { return note(1), false; }
    bool isCodeValid(CodeType) override { return note(2), false; }
    QString classVersion() override { return note(3), QString(); }
    bool hasBootcode() const override { return note(4), false; }
    HxMidiData lastProgrammingMsg() const override { return note(5), HxMidiData(); }
    QString esn() override { return note(6), QString(); }
    QString nickName() override { return note(7), QString(); }
    QString productPortName() const override { return note(8), QString(); }
    QString productInPortName() const override { return note(9), QString(); }
    QString productOutPortName() const override { return note(10), QString(); }
    QString productName() const override { return note(11), QString(); }
    qint32 versionNumber() override { return note(12), 0; }
    quint32 fidpid() override { return note(13), 0U; }
    quint32 rawFidpid() override { return note(14), 0U; }
    bool canSupport(unsigned int) override { return note(15), false; }
    FwUpdateProtocol getUpdateProtocol(QString const&, QList<HxMidiData> const&) override
    {
        return note(16), FwUpdateProtocol();
    }
    void setLastError(QString const&) override { note(17); }
    QVariant lookup(QString) const override { return note(18), QVariant(); }
    int lookupInt(QString) const override { return note(19), 0; }
    QString lookupStr(QString) const override { return note(20), QString(); }
    bool isBootcode() const override { return note(21), false; }
    QVector<unsigned int> getGenderList() const override { return note(22), QVector<unsigned>(); }
    QMap<unsigned int, QString> getFidPidNameMap() const override { return note(23), NameMap(); }
    QMap<QString, unsigned int> getNameFidPidMap() const override { return note(24), WordMap(); }

    mutable QVector<int> places;

private:
    using NameMap = QMap<unsigned int, QString>;
    using WordMap = QMap<QString, unsigned int>;

    void note(int place) const { places.append(place); }
};

CALLS_THROUGH_FROZEN_TABLE void callAllInOrder(FrozenContract* plugin)
{
    plugin->isNak(HxMidiData());
    plugin->isCodeValid(CodeType::Fwu);
    plugin->classVersion();
    plugin->hasBootcode();
    plugin->lastProgrammingMsg();
    plugin->esn();
    plugin->nickName();
    plugin->productPortName();
    plugin->productInPortName();
    plugin->productOutPortName();
    plugin->productName();
    plugin->versionNumber();
    plugin->fidpid();
    plugin->rawFidpid();
    plugin->canSupport(0);
    plugin->getUpdateProtocol(QString(), {});
    plugin->setLastError(QString());
    plugin->lookup(QString());
    plugin->lookupInt(QString());
    plugin->lookupStr(QString());
    plugin->isBootcode();
    plugin->getGenderList();
    plugin->getFidPidNameMap();
    plugin->getNameFidPidMap();
}

CALLS_THROUGH_FROZEN_TABLE void expectConstantAnswers(FrozenContract* plugin)
{
    EXPECT_EQ(plugin->classVersion(), "0.0.0.1");
    EXPECT_TRUE(plugin->hasBootcode());
    EXPECT_TRUE(plugin->lastProgrammingMsg().bytes.isEmpty());
    EXPECT_EQ(plugin->nickName(), "MyValdrinBoot");
    EXPECT_EQ(plugin->productPortName(), "Valdrin Update");
    EXPECT_EQ(plugin->productInPortName(), "Valdrin Update");
    EXPECT_EQ(plugin->productOutPortName(), "Valdrin Update");
    EXPECT_EQ(plugin->productName(), "Valdrin");
    EXPECT_EQ(plugin->fidpid(), 0x300041U);
    EXPECT_EQ(plugin->rawFidpid(), 0x300041U);
    EXPECT_TRUE(plugin->canSupport(0x300041));
    EXPECT_FALSE(plugin->canSupport(0x300042));
    EXPECT_TRUE(plugin->isBootcode());
    EXPECT_EQ(plugin->getGenderList().size(), 1);
    EXPECT_EQ(plugin->getFidPidNameMap().value(0x300041), "ValdrinBoot");
    EXPECT_EQ(plugin->getNameFidPidMap().value("ValdrinBoot"), 0x300041U);
}

CALLS_THROUGH_FROZEN_TABLE void expectLookupAnswers(FrozenContract* plugin)
{
    EXPECT_EQ(plugin->lookup("command.timeout.s").toInt(), 2);
    EXPECT_EQ(plugin->lookupInt("command.timeout.ms"), 2200);
    EXPECT_EQ(plugin->lookupStr("gender"), "F0006B2D30412FF7");
}

CALLS_THROUGH_FROZEN_TABLE void expectExchangeAnswers(FrozenContract* plugin, FakeBus& bus)
{
    EXPECT_TRUE(plugin->isNak(HxMidiData("F0 00 6B 2D 30 41 2E 46 F7")));
    EXPECT_FALSE(plugin->isCodeValid(CodeType::Fwu));
    EXPECT_EQ(bus.exchanges.size(), 2);
    EXPECT_TRUE(plugin->esn().isNull());
    EXPECT_EQ(bus.exchanges.size(), 3);
    bus.replies = {HxMidiData("F0 7E 10 06 02 00 6B 2D 30 00 41 00 31 30 32 33 F7")};
    EXPECT_EQ(plugin->versionNumber(), 1023);
}

CALLS_THROUGH_FROZEN_TABLE void expectUpdateAnswers(FrozenContract* plugin)
{
    EXPECT_EQ(plugin->getUpdateProtocol(QString(), {}).timeoutMs, 5500);
    EXPECT_TRUE(plugin->lastError.endsWith("Bad input arguments"));
    plugin->setLastError(QStringLiteral("x"));
    EXPECT_TRUE(plugin->lastError.endsWith(":322 - x"));
}

} // namespace

TEST(VirtualTableOrder, everyOperationHasItsPlace)
{
    PlaceProbe probe;
    callAllInOrder(throughFrozenTable<FrozenContract>(static_cast<DeviceInterface*>(&probe)));
    EXPECT_EQ(probe.places, (QVector<int>{1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12,
                                          13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24}));
}

TEST_F(VirtualTable, constantsAnswerAtTheirPlaces)
{
    expectConstantAnswers(frozen);
}

TEST_F(VirtualTable, lookupsAnswerAtTheirPlaces)
{
    expectLookupAnswers(frozen);
}

TEST_F(VirtualTable, exchangesAnswerAtTheirPlaces)
{
    expectExchangeAnswers(frozen, bus);
}

TEST_F(VirtualTable, updateOperationsAnswerAtTheirPlaces)
{
    expectUpdateAnswers(frozen);
}

TEST_F(VirtualTable, dataMembersStandInTheirOrder)
{
    const auto place = [this](const void* member) {
        return static_cast<const char*>(member) - reinterpret_cast<const char*>(device);
    };
    constexpr auto pointer = static_cast<std::ptrdiff_t>(sizeof(void*));
    constexpr auto text = static_cast<std::ptrdiff_t>(sizeof(QString)); // a pointer in Qt 5
    EXPECT_EQ(place(&device->bus), pointer);
    EXPECT_EQ(place(&device->hostWord), 2 * pointer);
    EXPECT_EQ(place(&device->lastError), 3 * pointer);
    EXPECT_EQ(place(&device->hostText), 3 * pointer + text);
    EXPECT_EQ(place(&device->hostMap), 3 * pointer + 2 * text);
    EXPECT_EQ(sizeof(DeviceInterface), static_cast<std::size_t>(4 * pointer + 2 * text));
}
