// Text from outside (names of files and ports, records, what a plugin says) as people may see it.
#pragma once

#include <QString>

namespace hx {

// The text with whatever would control a terminal or is not a character written out: "\x1B" for
// control characters and for bytes of a file's name that are not UTF-8, "\u202E" for what changes
// the line or the direction of writing.
QString printable(const QString& text);

// The same, with line feeds left as they are.
QString printableLines(const QString& text);

} // namespace hx
