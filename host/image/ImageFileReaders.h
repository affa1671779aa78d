// The three readers of parseImageFile, one for each form of file.
#pragma once

#include "host/image/ImageFile.h"

namespace hx {

// Offset of the first byte that cannot be in hex text, or -1 when the content is hex text: pairs
// of hex digits with blanks, commas, tabs and line ends between them, in an encoding of FileText.
qint64 firstNonTextByte(const QByteArray& content);

ImageFile readRawSysEx(const QByteArray& content);
ImageFile readHexText(const QByteArray& content);

bool isMidiFile(const QByteArray& content);
ImageFile readMidiFile(const QByteArray& content);

} // namespace hx
