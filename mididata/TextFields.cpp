#include "mididata/HxMidiData.h"
#include "mididata/Section.h"
#include "mididata/TextLength.h"
#include "qt/Saturated.h"

#include <algorithm>

namespace {

/** How long a text may become through bytes that are not there. */
constexpr int longestPaddedText = 1024 * 1024;

} // namespace

QString HxMidiData::getString(int pos, int len) const
{
    const int size = hx::saturated(bytes.size());
    const qint64 end = len == 0 ? qint64(size) - 1 : qint64(pos) + len;
    const qint64 length = std::min<qint64>(end - pos, std::max(longestPaddedText, size));
    if (length < 1 || !hx::fitsText(length))
        return QString();
    QString text(static_cast<int>(length), QChar(0));
    const int first = std::max(pos, 0);
    const int last = static_cast<int>(std::min<qint64>(pos + length, size));
    for (int i = first; i < last; ++i)
        text[i - pos] = QLatin1Char(static_cast<char>(bytes.at(i) & 0x7F));
    return text;
}

QString HxMidiData::toAsciiString(int pos, int len) const
{
    if (qint64(pos) + len > bytes.size())
        return QString();
    const hx::Section section = hx::clippedSection(pos, len, hx::saturated(bytes.size()));
    if (!hx::fitsText(section.size()))
        return QString();
    return QString(QLatin1String(bytes.constData() + section.begin, section.size()));
}
