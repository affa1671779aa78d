#include "tests/mididata/transcription/Transcription.h"

#include <cstdlib>

namespace transcription {

namespace {

int unsignedAt(const QByteArray& bytes, int i)
{
    return static_cast<unsigned char>(bytes.at(i));
}

bool ruleHolds(int index, int d)
{
    const int magnitude = std::abs(d);
    if (index <= 9)
        return d == 0;
    if (index <= 13)
        return magnitude <= 4;
    if (index <= 16)
        return true;
    if (index <= 25)
        return magnitude <= 4;
    if (index <= 68)
        return d == 0;
    if (index <= 70)
        return true;
    if (index <= 75)
        return d == 0;
    if (index <= 632)
        return true;
    if (index <= 647)
        return d == 0;
    return true;
}

} // namespace

bool isSame(const QByteArray& mine, const QByteArray& other)
{
    if (mine.isEmpty() && other.isEmpty())
        return true;
    if (mine.size() != other.size())
        return false;
    int index = 0;
    while (index < mine.size()) {
        const int d = unsignedAt(mine, index) - unsignedAt(other, index);
        if (!ruleHolds(index, d))
            return false;
        index = index == 200 ? 633 : index + 1;
    }
    return true;
}

QStringList diff(const QByteArray& mine, const QByteArray& other, int count, int offset)
{
    QStringList lines;
    if (mine.isEmpty() && other.isEmpty())
        return lines;
    if (count > 0 && mine.size() != other.size())
        lines.append(QString(QLatin1String("Size Mismatch: %1 != %2"))
                         .arg(QString::number(mine.size()), QString::number(other.size())));
    const auto n = qMin(mine.size(), other.size());
    qint64 from = 0;
    qint64 to = n;
    if (count > 0 && count <= n) {
        if (offset <= 0) {
            to = count;
        } else if (qint64(offset) + count <= n) {
            from = offset;
            to = qint64(offset) + count;
        }
    }
    for (int i = int(from); i < to; ++i) {
        if (mine.at(i) != other.at(i))
            lines.append(QString(QLatin1String("[%1] %2!=%3"))
                             .arg(i)
                             .arg(unsignedAt(mine, i))
                             .arg(unsignedAt(other, i)));
    }
    return lines;
}

QMap<unsigned int, unsigned char> diffToMap(const QByteArray& mine, const QByteArray& other,
                                            const std::pair<int, int>& range)
{
    QMap<unsigned int, unsigned char> map;
    if (other.isEmpty()) {
        for (int i = 0; i < mine.size(); ++i)
            map[static_cast<unsigned int>(i)] = 0;
        return map;
    }
    const qint64 n = qMin(mine.size(), other.size());
    const qint64 offset = range.first;
    const qint64 count = range.second;
    qint64 end = count == -1 ? n : count;
    if (count >= 1 && count <= n && offset > 0 && offset + count <= n)
        end = offset + count;
    for (qint64 i = offset; i < end; ++i) {
        if (i < 0) { // outside the buffers: go on where they begin
            i = -1;
            continue;
        }
        if (i >= n)
            break;
        if (mine.at(int(i)) != other.at(int(i)))
            map[static_cast<unsigned int>(i)] = static_cast<unsigned char>(other.at(int(i)));
    }
    return map;
}

quint64 hash(const QByteArray& bytes)
{
    if (bytes.isEmpty())
        return 0;
    quint64 h = 0;
    quint32 a = 63689;
    for (int i = 0; i < bytes.size(); ++i) {
        const qint64 v =
            unsignedAt(bytes, i) >= 0x80 ? unsignedAt(bytes, i) - 256 : unsignedAt(bytes, i);
        h = h * a + static_cast<quint64>(v);
        a = a * 378551u;
    }
    return h;
}

unsigned char detectMidiCh(const QByteArray& msg, unsigned char fallback)
{
    if (msg.isEmpty())
        return 0;
    if (msg.size() < 3)
        return static_cast<unsigned char>(msg.at(0) & 0x0F);
    if (unsignedAt(msg, 1) == 0x7E)
        return static_cast<unsigned char>(msg.at(2) & 0x0F);
    return fallback;
}

} // namespace transcription
