#include "host/image/UpdateImage.h"

#include "host/base/HexText.h"
#include "host/image/ImageChecker.h"
#include "host/image/ImageGrammar.h"

namespace hx {

namespace {

// Family and model of a message whose maker has an identifier as long as the product's.
quint32 identifierIn(const QByteArray& message, const QByteArray& header)
{
    const auto size = header.size();
    if (size == 0 || message.size() <= size || (message.at(1) == 0) != (header.at(1) == 0))
        return unknownIdentifier;
    return quint32(quint8(message.at(size - 2))) << 16 | quint8(message.at(size - 1));
}

// Why images of this product cannot be taken apart; empty when they can.
QString gapText(const ProductDescription& product)
{
    if (product.header.isEmpty())
        return QStringLiteral("the plugin does not say how the messages of its product begin: the "
                              "commands of its dictionary differ there.");
    if (product.headerIdentifier() != product.identifier)
        return QStringLiteral("the commands of the plugin's dictionary are for the product %1, the "
                              "plugin for %2.")
            .arg(identifierText(product.headerIdentifier()), identifierText(product.identifier));
    return product.updateKinds.empty()
               ? QStringLiteral("the plugin names no file check, by which images of its product "
                                "are known.")
               : QString();
}

} // namespace

QByteArray UpdateImage::expectedChecksum() const
{
    return sevenBitGroups(crc32(code), checksumGroups);
}

UpdateImage parseUpdateImage(const ImageFile& file, const ProductDescription& product)
{
    UpdateImage updateImage;
    updateImage.problems = file.problems;
    updateImage.checksumGroups = product.checksumGroups();
    for (const FileMessage& message : file.messages) {
        updateImage.messages << message.data;
        updateImage.bytes += message.data.bytes.size();
    }
    const bool holdsNothing = file.messages.empty();
    if (holdsNothing && file.problems.empty())
        addProblem(updateImage.problems, {},
                   QStringLiteral("the image is empty: it has no message."),
                   QStringLiteral("Get the update image again from where it came from."));
    if (holdsNothing)
        return updateImage;
    updateImage.identifier = identifierIn(file.messages.front().data.bytes, product.header);
    const QString why = gapText(product);
    if (why.isEmpty())
        ImageChecker(file, product, updateImage).check();
    else
        addProblem(updateImage.problems, {}, why, QStringLiteral("Install a complete plugin."));
    return updateImage;
}

UpdateImage loadUpdateImage(const QString& path, const ProductDescription& product)
{
    return parseUpdateImage(readImageFile(path), product);
}

} // namespace hx
