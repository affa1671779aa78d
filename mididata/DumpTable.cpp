#include "mididata/DumpTable.h"

#include "mididata/HxMidiData.h"
#include "mididata/Section.h"
#include "mididata/TextLength.h"
#include "mididata/fast/DumpTableWriter.h"
#include "mididata/fast/FastPaths.h"
#include "qt/Saturated.h"

namespace {

QString hexOf(int number, int digits)
{
    return QStringLiteral("%1").arg(number, digits, 16, QLatin1Char('0')).toUpper();
}

QString rowLabel(int offset)
{
    return hexOf(offset, 3) + QLatin1String(" | ");
}

// What follows the byte at `i` when there are several rows. Within a row that is the gap or a blank;
// the last byte of all is followed by what would separate it from the next row, or by a blank.
QString afterByte(int i, int size, int columns)
{
    if ((i + 1) % columns == 0)
        return QLatin1Char('\n') + rowLabel(i + 1);
    const bool isGap = columns == hx::ruledColumns && (i + 1) % hx::gapColumn == 0 && i + 1 < size;
    return isGap ? QStringLiteral(" - ") : QStringLiteral(" ");
}

QString plainTable(const QByteArray& bytes, int size, int columns)
{
    QString text = rowLabel(0);
    if (columns == hx::ruledColumns)
        text.prepend(QString::fromUtf16(hx::tableHeading.data()));
    for (int i = 0; i < size; ++i) {
        text += hexOf(static_cast<unsigned char>(bytes.at(i)), 2);
        if (i + 1 < size || size > columns)
            text += afterByte(i, size, columns);
    }
    return text;
}

} // namespace

QString HxMidiData::toStringTable(int len, int columns) const
{
    if (columns < 1)
        return QString();
    const int size = hx::clippedSection(0, len, hx::saturated(bytes.size())).size();
    if (!hx::fitsText(hx::greatestTableLength(size, columns)))
        return QString();
    return hx::fastPaths ? hx::writtenTable(bytes.constData(), size, columns)
                         : plainTable(bytes, size, columns);
}
