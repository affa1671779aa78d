// The device plugin for the boot loader of the product "Valdrin".
#pragma once

#include "deviceinterface/DeviceInterface.h"
#include "plugin/Identification.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QVariant>
#include <QVector>

// Serves one product: MIDI family byte 0x30, model byte 0x41, identifier word 0x300041. Qt's plugin
// loader creates the single instance on first use and a new one only after that was destroyed.
//
// Only `versionNumber`, `esn` and `isCodeValid` (and `doMidiIdent`) talk to the product, over
// `bus`, and block while the bus waits. One thread at a time.
class ValdrinBootInterface : public QObject, public DeviceInterface {
    Q_OBJECT
    Q_INTERFACES(DeviceInterface)
    Q_PLUGIN_METADATA(IID "com.tarv.qtio.DeviceInterface.ValdrinBootInterface" FILE
                          "bootValdrinPlugin.json")

public:
    explicit ValdrinBootInterface(QObject* parent = nullptr);

    bool isBootcode() const override;
    QString classVersion() override;
    quint32 fidpid() override;
    QString productName() const override;
    QString productPortName() const override;
    QVector<unsigned int> getGenderList() const override;
    QMap<unsigned int, QString> getFidPidNameMap() const override;
    QMap<QString, unsigned int> getNameFidPidMap() const override;

    // The serial number as sixteen upper-case hex digits, or a null text.
    //
    // It reads its command, reply pattern and offset under three "get.esn." keys that this
    // product's dictionary does not hold. So it logs three missing keys and asks the bus to send an
    // empty command; a host that wants the number reads "esn.read" itself. It also takes
    // only 8 characters of hex text. They give 8 bytes only when they contain signs: "-d-e" gives
    // "FFFFFFF3FFFFFFF2". It then logs a line for each pair of these bytes that is not hex text.
    // Kept as the hosts know it.
    //
    // `bus` must not be null: that is asserted in debug builds and not checked otherwise.
    QString esn() override;

    bool canSupport(unsigned int identifier) override;

    // A literal in the library itself: nothing is allocated, and it goes when the library goes.
    QString nickName() override;

    // Looks at the first and the last message only; sends nothing. `name` has no effect.
    //
    // An empty list records "Bad input arguments", a first or last message under 7 bytes "Update
    // data mismatch" (`lastError`): the result is then a default FwUpdateProtocol. A list that does
    // not end in the closing message F0 00 6B 2D 30 41 F7, or whose first message carries neither
    // 42 nor 43 at position 6, is of unknown kind: fidpid 0x7F007F.
    FwUpdateProtocol getUpdateProtocol(QString const& name,
                                       QList<HxMidiData> const& updateData) override;

    // True for a reply under 8 bytes and for one with 46 at position 7.
    bool isNak(BusData reply) override;

    // Has the product read the stored and calculate the actual checksum of its user code, and
    // compares the two. Always false, without an exchange, for every kind but Fwu.
    //
    // The compared values are the five bytes from position 6, so they begin with the echoed command
    // byte (30 and 31): two equal checksums compare as different. A missing reply counts as 0 on
    // the stored and as 1 on the calculated side. Hosts rely on these very answers; one that wants
    // the checksums themselves reads "version.read.user.crc" and "version.calc.user.crc".
    bool isCodeValid(CodeType type) override;

    // Runs an identity exchange, then returns the version number in `identity`: that of an earlier
    // reply, or 0, when the product does not answer now.
    qint32 versionNumber() override;

    QVariant lookup(QString key) const override;
    int lookupInt(QString key) const override;
    QString lookupStr(QString key) const override;

    // Sends the universal identity request to all devices, waits up to 25 seconds for this
    // product's reply and fills `identity` from it. No reply leaves `identity` as it was.
    //
    // `bus` must not be null: that is asserted in debug builds and not checked otherwise.
    void doMidiIdent();

    // A value out of a reply, at byte `offset`. `type` 3: a packed float, truncated to an integer
    // and stored as unsigned 32-bit (4294867297, which is -99999, when the data is too short; 0 for
    // NaN, infinities and values outside 64 bits). 4: a packed 32-bit number (4294967295 when too
    // short). 6: up to 8 bytes of hex text, as upper-case hex; empty when there is none at `offset`
    // or it is not hex (which is logged). Any other type: an invalid variant.
    // Reads no member.
    QVariant getValueWithTypeAndOffset(BusData const& data, int type, int offset);

    // In their fixed order. `fillerText` and `spareText` are read by nobody and keep their values.
    QMap<QString, QVariant> protocolMap;
    QString fillerText = QStringLiteral("0000");
    QString spareText;
    HxIdentity identity;
    QString productNameText = QString::fromLatin1("Valdrin");
    QVector<unsigned int> supportedGenders;
};
