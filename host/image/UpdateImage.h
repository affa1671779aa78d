/** @file
 * An update image taken apart and checked whole, before anything is sent.
 */
#pragma once

#include "deviceinterface/FwUpdateProtocol.h"
#include "host/base/WirePace.h"
#include "host/image/ImageFile.h"
#include "host/image/ImageProblems.h"
#include "host/product/ProductDescription.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace hx {

/**
 * What docs/formats/update-image.md lets one read out of an image. Fields that a damaged image does
 * not tell keep their initial value.
 */
struct UpdateImage {
    QList<HxMidiData> messages; /**< as they are to be sent */
    CodeType kind = CodeType::Unknown;
    int dataMessages = 0;
    QByteArray code;          /**< the code bytes, unpacked */
    qint64 statedLength = -1; /**< from the file check */
    quint32 statedCrc = 0;
    bool hasFileCheck = false;
    QString version;                        /**< "1.0.2.4"; empty without a file check */
    quint32 identifier = unknownIdentifier; /**< family and model that the first message names */
    /** 7-bit groups in which the product reports its checksum; 0: not at all */
    int checksumGroups = 0;
    qint64 bytes = 0;               /**< of all messages together */
    ImageProblems problems;         /**< in the order of the file; empty: the image is good */
    bool isForOtherProduct = false; /**< every message begins as those for another product do */

    bool ok() const { return problems.empty(); }

    /** Time that the messages take on a DIN MIDI wire, without the product's replies. */
    qint64 wireMicroseconds() const { return Pace().wireTime(bytes); }

    /**
     * The checksum that the product must report once it holds this code; empty when it reports
     * none.
     */
    QByteArray expectedChecksum() const;
};

/**
 * Takes the image apart as one for `product`, and collects its problems, those of the file first.
 */
UpdateImage parseUpdateImage(const ImageFile& file, const ProductDescription& product);

/** readImageFile and parseUpdateImage in one. */
UpdateImage loadUpdateImage(const QString& path, const ProductDescription& product);

} // namespace hx
