/** @file
 * Makes an update image out of code bytes.
 */
#pragma once

#include "host/base/Result.h"
#include "host/product/ProductDescription.h"
#include "mididata/HxMidiData.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace hx {

struct BuiltImage {
    QList<HxMidiData> messages;

    /** The content of a raw .syx file. */
    QByteArray fileContent() const;
};

/** Whether `version` is four digits, with dots between them or not: "1.0.2.4" or "1024". */
bool isImageVersion(const QString& version);

/**
 * An image for `product`. `version` as isImageVersion wants it. Code is 1 to 1,048,576 bytes; the
 * kind is one that the plugin names a file check for.
 */
Result<BuiltImage> buildImage(const ProductDescription& product, const QByteArray& code,
                              CodeType kind, const QString& version);

} // namespace hx
