#include "mididata/HxMidiData.h"
#include "mididata/fast/FastPaths.h"
#include "mididata/fast/StatusScan.h"
#include "qt/Saturated.h"

#include <algorithm>

namespace {

bool isStatus(char byte)
{
    return (static_cast<unsigned char>(byte) & 0x80) != 0;
}

constexpr char endOfExclusive = static_cast<char>(0xF7);

// The end of the piece that begins at `begin`: after its F7, before the next other status byte.
const char* endOfPiece(const char* begin, const char* end)
{
    const char* at = begin + 1;
    if (hx::fastPaths)
        at = hx::skipDataBytes(at, end);
    at = std::find_if(at, end, isStatus);
    return at != end && *at == endOfExclusive ? at + 1 : at;
}

} // namespace

QByteArray HxMidiData::mid(int pos, int len) const
{
    return bytes.mid(pos, len);
}

QList<HxMidiData> HxMidiData::split(int n) const
{
    QList<HxMidiData> pieces;
    const int size = hx::saturated(bytes.size());
    if (n == 0 || size <= n)
        return pieces;
    const int rest = static_cast<int>(size % qAbs<qint64>(n));
    const int full = n > 0 ? size - rest : 0; // a negative n has no full pieces
    for (int at = 0; at < full; at += n)
        pieces.append(HxMidiData(bytes.mid(at, n)));
    if (rest != 0)
        pieces.append(HxMidiData(bytes.mid(full, rest)));
    return pieces;
}

QList<HxMidiData> HxMidiData::splitOnStatus() const
{
    QList<HxMidiData> pieces;
    const char* const end = bytes.constData() + bytes.size();
    for (const char* begin = bytes.constData(); begin != end;) {
        const char* const next = endOfPiece(begin, end);
        pieces.append(HxMidiData()); // filled in the list, which would copy a finished piece
        pieces.last().bytes = QByteArray(begin, hx::saturated(next - begin));
        begin = next;
    }
    return pieces;
}
