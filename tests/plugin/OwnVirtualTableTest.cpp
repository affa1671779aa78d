// The plugin class's own virtual table: its operations follow those of QObject in a fixed order.
#include "plugin/ValdrinBootInterface.h"
#include "tests/plugin/FrozenTable.h"

#include <gtest/gtest.h>

// At file scope: of a class in an unnamed namespace the optimiser sees that nobody implements it.
//
// The order written down a second time on purpose: this copy never changes.
class FrozenPlugin : public QObject {
public:
    virtual bool isBootcode() const = 0;
    virtual QString classVersion() = 0;
    virtual quint32 fidpid() = 0;
    virtual QString productName() const = 0;
    virtual QString productPortName() const = 0;
    virtual QVector<unsigned int> getGenderList() const = 0;
    virtual QMap<unsigned int, QString> getFidPidNameMap() const = 0;
    virtual QMap<QString, unsigned int> getNameFidPidMap() const = 0;
    virtual QString esn() = 0;
    virtual bool canSupport(unsigned int identifier) = 0;
    virtual QString nickName() = 0;
    virtual FwUpdateProtocol getUpdateProtocol(QString const& name,
                                               QList<HxMidiData> const& data) = 0;
    virtual bool isNak(BusData reply) = 0;
    virtual bool isCodeValid(CodeType type) = 0;
    virtual qint32 versionNumber() = 0;
    virtual QVariant lookup(QString key) const = 0;
    virtual int lookupInt(QString key) const = 0;
    virtual QString lookupStr(QString key) const = 0;
};

namespace {

// Notes the place of each operation that is called, counted from 1.
class OwnPlaceProbe : public ValdrinBootInterface {
public:
    bool isBootcode() const override { return note(1), false; }
    QString classVersion() override { return note(2), QString(); }
    quint32 fidpid() override { return note(3), 0U; }
    QString productName() const override { return note(4), QString(); }
    QString productPortName() const override { return note(5), QString(); }
    QVector<unsigned int> getGenderList() const override { return note(6), QVector<unsigned>(); }
    QMap<unsigned int, QString> getFidPidNameMap() const override { return note(7), NameMap(); }
    QMap<QString, unsigned int> getNameFidPidMap() const override { return note(8), WordMap(); }
    QString esn() override { return note(9), QString(); }
    bool canSupport(unsigned int) override { return note(10), false; }
    QString nickName() override { return note(11), QString(); }
    FwUpdateProtocol getUpdateProtocol(QString const&, QList<HxMidiData> const&) override
    {
        return note(12), FwUpdateProtocol();
    }
    bool isNak(BusData) override { return note(13), false; }
    bool isCodeValid(CodeType) override { return note(14), false; }
    qint32 versionNumber() override { return note(15), 0; }
    QVariant lookup(QString) const override { return note(16), QVariant(); }
    int lookupInt(QString) const override { return note(17), 0; }
    QString lookupStr(QString) const override { return note(18), QString(); }

    mutable QVector<int> places;

private:
    using NameMap = QMap<unsigned int, QString>;
    using WordMap = QMap<QString, unsigned int>;

    void note(int place) const { places.append(place); }
};

CALLS_THROUGH_FROZEN_TABLE void callAllInOrder(FrozenPlugin* plugin)
{
    plugin->isBootcode();
    plugin->classVersion();
    plugin->fidpid();
    plugin->productName();
    plugin->productPortName();
    plugin->getGenderList();
    plugin->getFidPidNameMap();
    plugin->getNameFidPidMap();
    plugin->esn();
    plugin->canSupport(0);
    plugin->nickName();
    plugin->getUpdateProtocol(QString(), {});
    plugin->isNak(HxMidiData());
    plugin->isCodeValid(CodeType::Fwu);
    plugin->versionNumber();
    plugin->lookup(QString());
    plugin->lookupInt(QString());
    plugin->lookupStr(QString());
}

} // namespace

TEST(OwnVirtualTable, operationsFollowThoseOfQObjectInTheirOrder)
{
    OwnPlaceProbe probe;
    callAllInOrder(throughFrozenTable<FrozenPlugin>(static_cast<QObject*>(&probe)));
    EXPECT_EQ(probe.places,
              (QVector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18}));
}
