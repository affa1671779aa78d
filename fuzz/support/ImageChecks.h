// What holds for every image file that was read, whatever it holds.
#pragma once

#include "host/image/ImageFile.h"
#include "host/image/UpdateImage.h"

#include <QList>

namespace hx {
namespace fuzz {

// Messages are whole, problems lie within the file and say something, what is good has no problem.
void checkImageFile(const QByteArray& content, const ImageFile& file);

// The bytes of the messages.
QList<QByteArray> messagesOf(const ImageFile& file);

// The whole messages of a stream of bytes, by a plain scan, and whether there is anything else.
struct ScannedMessages {
    QList<QByteArray> messages;
    bool isClean = true;
};
ScannedMessages scanMessages(const QByteArray& stream);

} // namespace fuzz
} // namespace hx
