// Bytes looked for in bytes.
#pragma once

#include <QByteArray>

#include <cstring>

namespace hx {

// Equal to QByteArray::contains(). The C library's search is linear in the worst case and takes many
// bytes at once.
inline bool containsBytes(const QByteArray& bytes, const QByteArray& part)
{
    return part.isEmpty() || memmem(bytes.constData(), static_cast<size_t>(bytes.size()),
                                    part.constData(), static_cast<size_t>(part.size())) != nullptr;
}

} // namespace hx
