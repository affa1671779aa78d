// The short form in which a product refuses a command: its header, the command byte, a mark and F7.
// The plugin decides which marks refuse (`isNak`).
#pragma once

#include <QByteArray>

namespace hx {

// `start` is the header and the command byte.
inline QByteArray refusalForm(const QByteArray& start, char mark)
{
    return start + mark + '\xF7';
}

constexpr bool isRefusalSize(qsizetype messageSize, qsizetype headerSize)
{
    return messageSize == headerSize + 3;
}

} // namespace hx
