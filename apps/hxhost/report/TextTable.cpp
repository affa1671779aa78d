#include "apps/hxhost/report/TextTable.h"

#include "qt/Saturated.h"

#include <QVector>

#include <algorithm>

namespace hx::host {

namespace {

QVector<int> columnWidths(const QList<QStringList>& lines)
{
    QVector<int> widths;
    for (const QStringList& line : lines) {
        widths.resize(std::max(widths.size(), line.size()));
        for (int i = 0; i < line.size(); ++i)
            widths[i] = std::max(widths[i], saturated(line[i].size()));
    }
    return widths;
}

QString alignedLine(const QStringList& cells, const QVector<int>& widths)
{
    QString text;
    for (int i = 0; i < cells.size(); ++i)
        text += QLatin1String("  ") + cells[i].leftJustified(widths[i]);
    while (text.endsWith(QLatin1Char(' ')))
        text.chop(1);
    return text + QLatin1Char('\n');
}

} // namespace

QString textTable(const QStringList& headings, const QList<QStringList>& rows)
{
    const QList<QStringList> lines = QList<QStringList>{headings} + rows;
    const QVector<int> widths = columnWidths(lines);
    QString text;
    for (const QStringList& line : lines)
        text += alignedLine(line, widths);
    return text;
}

} // namespace hx::host
