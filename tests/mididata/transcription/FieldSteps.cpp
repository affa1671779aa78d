#include "qt/Saturated.h"
#include "tests/mididata/transcription/Transcription.h"

#include <cstring>

namespace transcription {

namespace {

/** Byte values as 64-bit numbers, so that a sum of products is exact before it wraps to 32 bits. */
qint64 unsignedAt(const QByteArray& bytes, qint64 i)
{
    return i >= 0 && i < bytes.size() ? static_cast<unsigned char>(bytes.at(int(i))) : 0;
}

qint64 signedAt(const QByteArray& bytes, qint64 i)
{
    const qint64 value = unsignedAt(bytes, i);
    return value >= 0x80 ? value - 0x100 : value;
}

qint64 maskedAt(const QByteArray& bytes, qint64 i)
{
    return unsignedAt(bytes, i) & 0x7F;
}

int wrapped(qint64 value)
{
    return static_cast<int>(static_cast<quint32>(static_cast<quint64>(value)));
}

bool fits(const QByteArray& bytes, int pos, int width)
{
    return pos >= 0 && qint64(pos) + width <= bytes.size();
}

constexpr qint64 bit(int n)
{
    return qint64(1) << n;
}

quint32 packed(const QByteArray& b, qint64 p)
{
    return static_cast<quint32>(unsignedAt(b, p) * bit(28)) |
           static_cast<quint32>(maskedAt(b, p + 1) * bit(21)) |
           static_cast<quint32>(maskedAt(b, p + 2) * bit(14)) |
           static_cast<quint32>(maskedAt(b, p + 3) * bit(7)) |
           static_cast<quint32>(maskedAt(b, p + 4));
}

} // namespace

int get14bit(const QByteArray& bytes, int pos, int fallback)
{
    if (bytes.size() < pos)
        return fallback;
    return wrapped(signedAt(bytes, pos) * 128 + signedAt(bytes, qint64(pos) + 1));
}

unsigned int getUtime(const QByteArray& bytes, int pos, int fallback)
{
    return fits(bytes, pos, 5) ? packed(bytes, pos) : static_cast<unsigned int>(fallback);
}

float getFloat32(const QByteArray& bytes, int pos, float fallback)
{
    if (!fits(bytes, pos, 5))
        return fallback;
    const quint32 bits = packed(bytes, pos);
    float value = 0;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

int get32bit(const QByteArray& bytes, int pos, int fallback)
{
    if (!fits(bytes, pos, 5))
        return fallback;
    return wrapped(unsignedAt(bytes, pos) * bit(28) + signedAt(bytes, pos + 1) * bit(21) +
                   signedAt(bytes, pos + 2) * bit(14) + signedAt(bytes, pos + 3) * bit(7) +
                   signedAt(bytes, pos + 4));
}

int get32bitLE(const QByteArray& bytes, int pos, int fallback)
{
    if (!fits(bytes, pos, 5))
        return fallback;
    return wrapped(unsignedAt(bytes, pos + 4) * bit(28) + signedAt(bytes, pos + 3) * bit(21) +
                   signedAt(bytes, pos + 2) * bit(14) + signedAt(bytes, pos + 1) * bit(7) +
                   signedAt(bytes, pos));
}

int toInt(const QByteArray& bytes, int pos, int width, int fallback)
{
    if (width < 1 || width > 4 || !fits(bytes, pos, width))
        return fallback;
    if (width == 1)
        return wrapped(signedAt(bytes, pos));
    if (width == 2)
        return wrapped(signedAt(bytes, pos) * bit(7) + signedAt(bytes, pos + 1));
    if (width == 3)
        return wrapped(signedAt(bytes, pos) * bit(16) + signedAt(bytes, pos + 1) * bit(8) +
                       signedAt(bytes, pos + 2));
    return wrapped(unsignedAt(bytes, pos) * bit(24) + signedAt(bytes, pos + 1) * bit(16) +
                   signedAt(bytes, pos + 2) * bit(8) + signedAt(bytes, pos + 3));
}

bool set14bit(QByteArray& bytes, int pos, int value)
{
    if (pos < 0 || pos >= bytes.size())
        return false;
    if (pos + 1 == bytes.size())
        bytes.append('\0');
    bytes[pos] = char((value >> 7) & 0x7F);
    bytes[pos + 1] = char(value & 0x7F);
    return true;
}

QString getString(const QByteArray& bytes, int pos, int len)
{
    const qint64 longest = qMax(1048576, bytes.size());
    const qint64 end = len == 0 ? qint64(bytes.size()) - 1 : qint64(pos) + len;
    QString text;
    for (qint64 i = pos; i < end && text.size() < longest; ++i)
        text.append(QChar(static_cast<ushort>(maskedAt(bytes, i))));
    return text;
}

QString toAsciiString(const QByteArray& bytes, int pos, int len)
{
    QString text;
    if (qint64(pos) + len > bytes.size())
        return text;
    const QByteArray section = bytes.mid(pos, len);
    for (int i = 0; i < section.size(); ++i)
        text.append(QLatin1Char(section.at(i)));
    return text;
}

int sumOfSection(const QByteArray& bytes, int pos, int len)
{
    QByteArray section;
    if (len == -1 && pos < 0)
        section = bytes; // size - pos bytes from a position before the beginning: all of them
    else
        section = bytes.mid(pos, len == -1 ? bytes.size() - pos : len);
    unsigned int sum = 0;
    for (int i = 0; i < section.size(); ++i)
        sum += static_cast<unsigned int>(section.at(i)) & 0x7F;
    return static_cast<int>(sum & 0x7F);
}

unsigned int sum32(const QByteArray& bytes, unsigned int pos, int end)
{
    int stop = end;
    if (stop < 0)
        stop = hx::saturated(bytes.size()) + stop;
    const int begin = static_cast<int>(pos);
    if (stop <= begin)
        return 0;
    unsigned int sum = 0;
    for (int i = qMax(begin, 0); i < stop && i < bytes.size(); ++i)
        sum += static_cast<unsigned char>(bytes.at(i));
    return sum;
}

QByteArray cvt8to7(const QByteArray& source)
{
    QByteArray result;
    for (int from = 0; from < source.size(); from += 7) {
        const QByteArray group = source.mid(from, 7);
        int header = 0;
        for (int i = 0; i < 7; ++i) {
            header <<= 1;
            if (i < group.size() && (group.at(i) & 0x80) != 0)
                header |= 1;
        }
        result.append(char(header));
        for (int i = 0; i < group.size(); ++i)
            result.append(char(group.at(i) & 0x7F));
    }
    return result;
}

} // namespace transcription
