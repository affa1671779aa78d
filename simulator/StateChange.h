// What was written to the memory, one line a time, behind the state file's whole text.
#pragma once

#include "simulator/ProductMemory.h"

#include <QString>

namespace hx::sim {

// The line that makes of what a state file held before what `code` is now; the code bytes before
// `address` are the same in both.
QByteArray writeStateChange(const StoredCode& code, int address);

// Whether the text may be lines of changes: it is empty or begins as one does.
bool looksLikeStateChanges(const QByteArray& text);

// Makes the changes of the lines in `text`, of which the first is line `firstLine` of the file. A
// last line without its end was not finished when the program stopped, and does not count. False
// when a line is damaged; `line` is then its number, and `code` holds what the lines before it say.
bool applyStateChanges(const QByteArray& text, int firstLine, int memorySize, StoredCode* code,
                       int* line);

} // namespace hx::sim
