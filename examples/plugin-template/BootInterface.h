// The device plugin of one product: everything that a host may ask about it.
#pragma once

#include <deviceinterface/DeviceInterface.h>

#include <QMap>
#include <QObject>
#include <QString>
#include <QVariant>

// What each operation must answer is said in deviceinterface/DeviceInterface.h. Hosts check the
// interface identifier before they run any code: keep "com.tarv.qtio.DeviceInterface." and end it
// with the name of the class.
class ExampleBootInterface : public QObject, public DeviceInterface {
    Q_OBJECT
    Q_INTERFACES(DeviceInterface)
    Q_PLUGIN_METADATA(IID "com.tarv.qtio.DeviceInterface.ExampleBootInterface" FILE "plugin.json")

public:
    ExampleBootInterface();

    // BootInterface.cpp: constants, and the protocol dictionary by key.
    QString classVersion() override;
    QString nickName() override;
    QString productName() const override;
    QString productPortName() const override;
    quint32 fidpid() override;
    bool canSupport(unsigned int identifier) override;
    bool isBootcode() const override;
    QVector<unsigned int> getGenderList() const override;
    QMap<unsigned int, QString> getFidPidNameMap() const override;
    QMap<QString, unsigned int> getNameFidPidMap() const override;
    QVariant lookup(QString key) const override;
    int lookupInt(QString key) const override;
    QString lookupStr(QString key) const override;

    // Exchanges.cpp: what talks to the product, and the reading of its replies.
    qint32 versionNumber() override;
    QString esn() override;
    bool isCodeValid(CodeType code) override;
    bool isNak(BusData reply) override;

    // UpdateDescription.cpp
    FwUpdateProtocol getUpdateProtocol(QString const& name, QList<HxMidiData> const& data) override;

private:
    BusData exchange(const QString& key) const;

    const QMap<QString, QVariant> m_protocol;
};
