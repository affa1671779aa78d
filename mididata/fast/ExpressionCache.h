// The regular expressions of the patterns that a thread has matched last.
//
// Equal to compiling the pattern each time: where an expression is found does not depend on what it was
// looked for in before. Kept for each thread, because a search writes into its expression. Not in
// variables of the thread: these would keep a plugin in memory, after it was unloaded, until the
// thread ends.
#pragma once

class HxMidiData;

namespace hx {

// Where the expression of a pattern is first found in a buffer's compact hex text; -1: nowhere.
int findExpression(const char* pattern, const HxMidiData& data);

} // namespace hx
