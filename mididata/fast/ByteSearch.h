// Bytes looked for in bytes.
//
// Equal to QByteArray::contains(): on processors with vectors of 32 bytes a place is looked at only when the first
// and the last of the sought bytes stand there. When such places are so many that comparing them takes longer than
// reading, and on other processors, the C library's search goes on, which is linear in the worst case.
#pragma once

#include <QByteArray>

namespace hx {

bool containsBytes(const QByteArray& bytes, const QByteArray& part);

} // namespace hx
