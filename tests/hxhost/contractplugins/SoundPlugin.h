// A plugin that keeps the contract, for a product that does not exist; the plugins beside it break
// one rule each.
#pragma once

#include "deviceinterface/DeviceInterface.h"

#include <QObject>

class SoundPlugin : public QObject, public DeviceInterface {
    Q_OBJECT
    Q_INTERFACES(DeviceInterface)

public:
    SoundPlugin();
    ~SoundPlugin() override;

    QString classVersion() override { return QStringLiteral("1.0"); }
    QString nickName() override { return QStringLiteral("MySound"); }
    QString productName() const override;
    QString productPortName() const override { return QStringLiteral("Sound Update"); }
    quint32 fidpid() override;
    bool canSupport(unsigned int identifier) override;
    bool hasBootcode() const override;
    bool isBootcode() const override { return true; }
    QVector<unsigned int> getGenderList() const override { return {identifierWord()}; }
    QMap<unsigned int, QString> getFidPidNameMap() const override;
    QMap<QString, unsigned int> getNameFidPidMap() const override;
    void setLastError(QString const& message) override;
    QVariant lookup(QString key) const override;
    int lookupInt(QString key) const override { return lookup(key).toInt(); }
    QString lookupStr(QString key) const override;

    qint32 versionNumber() override;
    QString esn() override;
    bool isCodeValid(CodeType code) override;
    bool isNak(BusData reply) override;
    FwUpdateProtocol getUpdateProtocol(QString const& name, QList<HxMidiData> const& data) override;

    // Whether the environment asks for this rule to be broken.
    static bool breaks(const char* rule) { return qgetenv("HX_BREAKS") == rule; }

private:
    static unsigned identifierWord() { return breaks("identifier.form") ? 0x118022 : 0x110022; }
    BusData ask(const char* key) const;
    QMap<QString, QVariant> m_dictionary;
};
