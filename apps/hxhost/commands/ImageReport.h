// An update image put into a report.
#pragma once

#include "apps/hxhost/session/CommandContext.h"

#include "host/image/UpdateImage.h"
#include "host/signature/ImageSignature.h"

namespace hx::host {

// An image as it was read from a file.
struct LoadedImage {
    QString path;
    ImageFile file;
    UpdateImage image;
    SignatureVerdict origin = {}; // until it is looked at
    QByteArray signature = {};    // the content of its file, where one was read
};

// Fails the command, and returns true, when a file of this format is a web page, which was saved in the
// place of an update, or an archive, which may hold one.
bool failForeign(CommandContext& context, const QString& name, ImageFormat format);

// The image for `product` that `content` is, which was read from the file `name` or written to it.
LoadedImage imageIn(const QString& name, const QByteArray& content,
                    const ProductDescription& product);

// Adds kind, product, version, messages, sizes, time on the wire, and the problems.
void addImage(Report& report, const LoadedImage& loaded);

// Reads a file, "-" from standard input, and adds what it holds to the report. None, with the problem
// in the report, when it cannot be read.
std::optional<LoadedImage> openImage(CommandContext& context, const std::string& path,
                                     const ProductDescription& product);

// False, with the problem in the report, when it is not a whole image for the product.
bool requireGoodImage(CommandContext& context, const LoadedImage& loaded);

// Both.
std::optional<LoadedImage> readImage(CommandContext& context, const std::string& path,
                                     const ProductDescription& product);

// "1 min 2 s" for 62 seconds; rounded up to whole seconds.
QString durationText(qint64 microseconds);

} // namespace hx::host
