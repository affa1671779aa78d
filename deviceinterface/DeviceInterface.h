/** @file
 * The contract between the host and a device plugin.
 */
#pragma once

#include "deviceinterface/Bus.h"
#include "deviceinterface/FwUpdateProtocol.h"
#include "mididata/HxMidiData.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>
#include <QVector>
#include <QtPlugin>

/**
 * A plugin is a QObject that also derives from DeviceInterface. The host calls it through this
 * class's virtual table: the order of the 24 operations is part of the contract, and there is no
 * virtual destructor among them. A plugin object is destroyed through its QObject base.
 *
 * Nothing here throws or locks. Failure is a result: false, 0, an empty text or buffer, an invalid
 * variant. Call a plugin from one thread at a time.
 */
class DeviceInterface {
public:
    /** True when `reply` is a refusal. */
    virtual bool isNak(BusData reply) = 0;

    /**
     * True when the code image of the given kind that the product holds is intact. May talk to the
     * product.
     */
    virtual bool isCodeValid(CodeType code) = 0;

    /** Version of the plugin class. */
    virtual QString classVersion() = 0;

    /** True when the product has a boot loader. */
    virtual bool hasBootcode() const { return true; }

    /** The last programming message; an empty buffer when the plugin keeps none. */
    virtual HxMidiData lastProgrammingMsg() const { return HxMidiData(); }

    /**
     * The product's electronic serial number, a null text when it cannot be read. Talks to the
     * product.
     */
    virtual QString esn() = 0;

    /**
     * Short name of the plugin. Its characters may be part of the plugin's library: copy them
     * before the library is unloaded. The other texts need no copy.
     */
    virtual QString nickName() = 0;

    /** Name of the product's MIDI port. */
    virtual QString productPortName() const = 0;

    /** Name of its input port, where that differs. */
    virtual QString productInPortName() const { return productPortName(); }

    /** Name of its output port, where that differs. */
    virtual QString productOutPortName() const { return productPortName(); }

    /** Name of the product, as a person knows it. */
    virtual QString productName() const = 0;

    /** Firmware version as one number (1.0.2.3 is 1023). Talks to the product. */
    virtual qint32 versionNumber() = 0;

    /** Identifier word of the product: family byte in bits 16 to 23, model byte in bits 0 to 7. */
    virtual quint32 fidpid() = 0;

    /** The identifier word as read from the product. */
    virtual quint32 rawFidpid() { return fidpid(); }

    /** True when the plugin serves a product with this identifier word. */
    virtual bool canSupport(unsigned int identifier) = 0;

    /**
     * Describes the exchange that sends `data`, an update image as an ordered list of complete
     * SysEx messages. `name` is the image's name. An image of unknown kind gives codeType Unknown.
     */
    virtual FwUpdateProtocol getUpdateProtocol(QString const& name,
                                               QList<HxMidiData> const& data) = 0;

    /**
     * Replaces `lastError` by `message`, with the place of this declaration in front: the header's
     * path in the project, a colon, 322, " - ".
     */
    virtual void setLastError(QString const& message)
    {
        lastError = QStringLiteral("deviceinterface/DeviceInterface.h:322 - ") + message;
    }

    /** One entry of the plugin's protocol dictionary, by its dotted key; invalid when missing. */
    virtual QVariant lookup(QString key) const = 0;

    /** The entry as an integer; 0 for a text that is not a number and for a missing key. */
    virtual int lookupInt(QString key) const = 0;

    /** The entry as a text, a number in decimal; empty for a missing key. */
    virtual QString lookupStr(QString key) const = 0;

    /** True when the plugin serves the product's boot loader, not its ordinary firmware. */
    virtual bool isBootcode() const = 0;

    /** The identifier words that the plugin serves. */
    virtual QVector<unsigned int> getGenderList() const = 0;

    /** Their names, by identifier word. */
    virtual QMap<unsigned int, QString> getFidPidNameMap() const = 0;

    /** The identifier words, by name: the inverse of getFidPidNameMap(). */
    virtual QMap<QString, unsigned int> getNameFidPidMap() const = 0;

    /**
     * The transport to the product. The host sets it before it asks for anything that talks to the
     * product, keeps it valid meanwhile, and owns it.
     */
    Bus* bus = nullptr;

    /** For the host's own use; no plugin reads or writes it, and nothing initialises it. */
    quintptr hostWord;

    /** The last error text, written by `setLastError`. */
    QString lastError;

    /** For the host's own use. */
    QString hostText;

    /** For the host's own use. */
    QMap<QString, QVariant> hostMap;

protected:
    /** hostWord is the host's alone: it keeps whatever its memory held. */
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init,modernize-use-equals-default)
    DeviceInterface() {}
    DeviceInterface(const DeviceInterface&) = delete;
    DeviceInterface& operator=(const DeviceInterface&) = delete;
    ~DeviceInterface() = default;
};

Q_DECLARE_INTERFACE(DeviceInterface, "com.tarv.qtio.DeviceInterface")
