/** @file
 * What a plugin tells of its product: all that the host knows of the product's messages.
 */
#pragma once

#include "deviceinterface/DeviceInterface.h"
#include "host/product/PatternBytes.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <vector>

namespace hx {

/** How the messages of an update image of one kind are recognised; read from its file check. */
struct UpdateKind {
    CodeType kind = CodeType::Unknown;
    quint8 command = 0;   /**< follows the header in every message of the image but the last */
    quint8 fileCheck = 0; /**< follows `command` in the file check */
};

/** Plain data: it stays valid when the plugin is unloaded. */
struct ProductDescription {
    QString name;
    quint32 identifier = unknownIdentifier;

    /**
     * How every message of the product begins: F0, maker, family, model. Empty when the commands of
     * the dictionary do not begin alike.
     */
    QByteArray header;

    std::vector<UpdateKind> updateKinds; /**< those that the dictionary has a file check for */

    /** By the key of the reply; a reply that the dictionary lacks has none. */
    QMap<QString, ReplyLayout> replies;

    /** What is needed to prove an update and is not in the dictionary: "stored checksum", ... */
    QStringList missingProofs;

    /**
     * Family and model in the header, which are those of `identifier` unless the plugin is wrong.
     */
    quint32 headerIdentifier() const;

    /** The maker's one or three bytes; empty without a header. */
    QByteArray manufacturer() const;

    /** Null when images of this kind cannot be read. */
    const UpdateKind* updateKind(CodeType kind) const;

    /** How many 7-bit groups a checksum in the product's replies has; 0: it reports none. */
    int checksumGroups() const;

    /** "this plugin names no stored checksum: ..." for people; empty when nothing is missing. */
    QString missingProofText() const;
};

/** Asks the plugin for names and patterns alone; nothing is sent. */
ProductDescription describeProduct(DeviceInterface& device);

} // namespace hx
