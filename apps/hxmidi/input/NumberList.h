// Bytes written as numbers: in decimal, or as the initialiser of a C array.
#pragma once

#include "apps/hxmidi/findings/Finding.h"

namespace hx::midi {

// Numbers 0 to 255 separated by blanks or commas, as toStringDec() writes them.
QByteArray readDecimalList(const SourceText& source, Findings& findings);

// What is between the braces of a C array, or the whole text when it has none: numbers 0 to
// 255, decimal or hexadecimal after 0x, separated by commas.
QByteArray readCArray(const SourceText& source, Findings& findings);

} // namespace hx::midi
