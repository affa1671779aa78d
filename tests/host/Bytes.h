// Bytes as tests write them, and as they were found in an image file.
#pragma once

#include "host/image/ImageFile.h"

inline QByteArray hex(const char* digits)
{
    return QByteArray::fromHex(digits);
}

inline QList<QByteArray> messagesOf(const hx::ImageFile& file)
{
    QList<QByteArray> result;
    for (const hx::FileMessage& message : file.messages)
        result << message.data.bytes;
    return result;
}
