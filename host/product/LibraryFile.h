// Whether the file of a shared library is all there.
#pragma once

#include <QString>

namespace hx {

// Whether the file ends before the table that an ELF library ends with. Of files of other kinds, and of
// libraries without that table, nothing is known: false.
bool isCutOff(const QString& path);

} // namespace hx
