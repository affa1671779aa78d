// A plugin that describes an update, and names messages, as the test says.
#pragma once

#include "deviceinterface/DeviceInterface.h"

class StubPlugin : public DeviceInterface {
public:
    StubPlugin()
    {
        protocol.fidpid = 0x300041;
        protocol.codeType = CodeType::Fwu;
        protocol.responseAny = protocol.responseGood = protocol.responseBad =
            protocol.responseFailed = ResponceData("F0");
        protocol.fileCheck = ResponceData("F0 00 6B 2D 30 41 43 0C");
    }

    bool isNak(BusData) override { return false; }
    bool isCodeValid(CodeType) override { return false; }
    QString classVersion() override { return QString(); }
    QString esn() override { return QString(); }
    QString nickName() override { return QString(); }
    QString productPortName() const override { return QString(); }
    QString productName() const override { return QStringLiteral("Stub"); }
    qint32 versionNumber() override { return 0; }
    quint32 fidpid() override { return identifier; }
    bool canSupport(unsigned int word) override { return word == supported; }
    FwUpdateProtocol getUpdateProtocol(QString const&, QList<HxMidiData> const&) override
    {
        ++asked;
        if (!error.isEmpty())
            setLastError(error);
        return protocol;
    }
    QVariant lookup(QString) const override { return QVariant(); }
    int lookupInt(QString) const override { return 0; }
    QString lookupStr(QString key) const override { return texts.value(key); }
    bool isBootcode() const override { return true; }
    QVector<unsigned int> getGenderList() const override { return {}; }
    QMap<unsigned int, QString> getFidPidNameMap() const override { return {}; }
    QMap<QString, unsigned int> getNameFidPidMap() const override { return {}; }

    FwUpdateProtocol protocol;
    QMap<QString, QString> texts; // of the dictionary
    quint32 identifier = 0x300041;
    unsigned supported = 0x300041;
    QString error;
    int asked = 0;
};
