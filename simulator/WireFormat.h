// How numbers, code bytes and checks are written in the 7-bit bytes of a SysEx message.
#pragma once

#include <QByteArray>

namespace hx::sim {

// `count` 7-bit groups from `position`, most significant first; at most 9 groups, all present.
quint64 readGroups(const QByteArray& message, int position, int count);

// The low 7 * `count` bits of `value` as `count` groups, most significant first.
QByteArray writeGroups(quint64 value, int count);

// The sum of the bytes from `position` up to, not including, `end`, in 7 bits.
quint8 sum7(const QByteArray& message, int position, int end);

// Bytes that `count` code bytes take when packed.
constexpr int packedSize(int count)
{
    return count + (count + 6) / 7;
}

// The code bytes of a packed run: a header byte with the top bits of up to seven bytes, the first
// one's in bit 6, and then these bytes without them. False when a header has a bit for a byte that
// is not there; `code` then has no meaning.
bool unpack(const QByteArray& packed, QByteArray* code);

} // namespace hx::sim
