// Rows of cells as aligned columns of text.
#pragma once

#include <QList>
#include <QStringList>

namespace hx::host {

// A heading line and one line a row, columns two blanks apart and as wide as their widest cell,
// each line indented by two blanks, without blanks at its end.
QString textTable(const QStringList& headings, const QList<QStringList>& rows);

} // namespace hx::host
