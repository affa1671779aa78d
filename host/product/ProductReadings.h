/** @file
 * What the host reads from the product itself, with the plugin's dictionary as its only knowledge.
 */
#pragma once

#include "deviceinterface/DeviceInterface.h"
#include "host/bus/PortBus.h"
#include "host/product/ProductDescription.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace hx {

/** How often a question is put while no answer comes: a message may be lost on the way. */
constexpr int questionAttempts = 3;

enum class ReadingState {
    NotRead,
    Good,
    Refused,      /**< the product answered with a negative acknowledgement */
    Malformed,    /**< it answered, but the answer does not hold what it should */
    NoAnswer,     /**< nothing that fits came in time */
    OtherProduct, /**< an identity reply that does not fit the plugin's own pattern */
    PortLost,
    Interrupted,
    Unknown, /**< the plugin's dictionary has no such command */
};

/** "good", "refused", "no answer", ... */
QString readingStateText(ReadingState state);

struct Reading {
    QString key; /**< of the command in the dictionary */
    ReadingState state = ReadingState::NotRead;
    HxMidiData raw; /**< the reply; empty when there was none */
    QString reason; /**< why it is not good; empty when it is */

    bool good() const { return state == ReadingState::Good; }
};

struct IdentityReading : Reading {
    QByteArray manufacturer; /**< one or three bytes */
    quint32 fidpid = 0;      /**< (family << 16) | model */
    QByteArray versionBytes; /**< four */
    QString version;         /**< "1.0.2.3" */

    /** Whether the members above are from a product's reply. */
    bool isTold() const { return good() || state == ReadingState::OtherProduct; }
};

struct GenderReading : Reading {
    quint32 fidpid = 0;
};

struct VersionReading : Reading {
    QByteArray versionBytes; /**< mostly four */
    QString version;         /**< "1.0.2.3" */
};

struct ChecksumReading : Reading {
    QByteArray groups; /**< of 7 bits, most significant first */
    quint64 value = 0; /**< all groups as one number */
};

struct EsnReading : Reading {
    QByteArray number;
};

/** One of the two code images, from the reply to "id.dsp0" or "id.dsp1". */
struct CodeImageReading : Reading {
    bool present = false; /**< false: the product says that there is no such image */
    int version = 0;      /**< at "id.dsp.offset.code_ver", 14 bits */
    int responseFlag = 0; /**< at "id.dsp.offset.response_flag" */
    quint32 size = 0;     /**< at "id.dsp.offset.code_size", five 7-bit groups */
    int bankStatus = 0;   /**< at "id.dsp.offset.bank_status" */
};

/**
 * Reads over `bus`, each reading with the timeout "command.timeout.ms" of the dictionary. A
 * negative acknowledgement ends the wait too: besides the dictionary's pattern, the short refusal
 * of the command counts as an answer. A question without an answer is put `questionAttempts` times.
 */
class ProductReader {
public:
    ProductReader(DeviceInterface& device, PortBus& bus);

    /**
     * The first product that answers and that the plugin serves; when only others answer, the last
     * of them (see `isServed`). Asked up to `attempts` times, until a served product answers or
     * another one has given the same answer twice. An identity reply that does not fit the
     * plugin's pattern does not end the asking: the right product may still be starting. Its state
     * is OtherProduct, or NoAnswer with the reply when maker, family and model are served ones.
     */
    IdentityReading identity(int attempts = questionAttempts);
    GenderReading gender();
    VersionReading version();
    ChecksumReading storedChecksum();
    ChecksumReading calculatedChecksum();
    EsnReading esn();
    CodeImageReading codeImage(int number); /**< 0 or 1 */

    /** Whether the identity is one that the plugin serves. */
    bool isServed(const IdentityReading& identity) const;

    const ProductDescription& product() const { return m_product; }
    DeviceInterface& device() const { return m_device; }
    PortBus& bus() const { return m_bus; }

private:
    Reading read(const QString& key, const QStringList& responseKeys);
    ReplyTest replyOrRefusal(const HxMidiData& command, const QStringList& responseKeys) const;
    bool isRefusal(const HxMidiData& reply) const;
    bool hasValue(Reading& reading, const ReplyLayout& layout) const;
    ReplyLayout layoutOf(const QString& key) const;
    void readImageFields(CodeImageReading& image) const;
    QString missingEntry(const QStringList& keys) const;
    ChecksumReading checksum(const QString& key);
    IdentityReading askIdentity();
    IdentityReading keptOut(IdentityReading identity) const;
    unsigned timeoutMs() const;

    DeviceInterface& m_device;
    PortBus& m_bus;
    ProductDescription m_product;
};

/** "1.0.2.3" for four printable bytes; their hex pairs otherwise. */
QString versionTextOf(const QByteArray& versionBytes);

/** An identity reply taken apart; state Malformed when it is not one. */
IdentityReading parseIdentity(const HxMidiData& reply);

/** Everything, for `hxhost info`. */
struct ProductInfo {
    IdentityReading identity;
    GenderReading gender;
    VersionReading version;
    ChecksumReading stored;
    ChecksumReading calculated;
    EsnReading esn;
    CodeImageReading dsp0;
    CodeImageReading dsp1;
};
/** Stops after the identity when nothing answers to that, or the port is lost. */
ProductInfo readProductInfo(ProductReader& reader);

/** The plugin's own answers, exactly as its contract has them, beside what the host reads. */
struct PluginAnswers {
    qint32 versionNumber = 0;
    QString esn; /**< null: none */
    bool fwuValid = false;
    bool fwdValid = false;
};
PluginAnswers askPlugin(DeviceInterface& device);

} // namespace hx
