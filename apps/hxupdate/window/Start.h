// Puts the program together and runs it.
#pragma once

namespace hxupdate {

// Returns the program's exit code when its window is closed.
int start(int argc, char** argv);

} // namespace hxupdate
