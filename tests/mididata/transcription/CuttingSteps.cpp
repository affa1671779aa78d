#include "tests/mididata/transcription/Transcription.h"

namespace transcription {

QList<QByteArray> split(const QByteArray& bytes, int n)
{
    QList<QByteArray> pieces;
    const qint64 size = bytes.size();
    if (n == 0 || size <= n)
        return pieces;
    const qint64 full = size / n; // toward zero: 0 or less for a negative n
    for (qint64 i = 0; i < full; ++i)
        pieces.append(bytes.mid(int(i * n), n));
    const qint64 rest = size % n;
    if (rest != 0)
        pieces.append(full > 0 ? bytes.mid(int(full * n)) : bytes.mid(0, int(rest)));
    return pieces;
}

QList<QByteArray> splitOnStatus(const QByteArray& bytes)
{
    QList<QByteArray> pieces;
    QByteArray current;
    for (const char byte : bytes) {
        const unsigned char value = static_cast<unsigned char>(byte);
        if (value < 0x80 || current.isEmpty()) {
            current.append(byte);
        } else if (value == 0xF7) {
            current.append(byte);
            pieces.append(current);
            current.clear();
        } else {
            pieces.append(current);
            current.clear();
            current.append(byte);
        }
    }
    if (!current.isEmpty())
        pieces.append(current);
    return pieces;
}

QByteArray copied(const QByteArray& bytes, int start, int count)
{
    QByteArray out;
    if (start < 0)
        return out;
    const qint64 available = qint64(bytes.size()) - start;
    const qint64 wanted = count == -1 ? bytes.size() : count;
    const qint64 n = available < wanted ? available : wanted;
    for (qint64 i = 0; i < n; ++i)
        out.append(bytes.at(int(start + i)));
    return out;
}

} // namespace transcription
