// A dump table written row by row.
#pragma once

#include <QString>

namespace hx {

// Equal to appending the table byte by byte. What separates a byte from the next depends on its
// column only, so a row is its label, its bytes separated, and a gap in the middle of a ruled one.
// `columns` is 1 or more. Null when the table is longer than a text can be.
QString writtenTable(const char* bytes, int size, int columns);

} // namespace hx
