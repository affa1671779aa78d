// How the program can end, as grep and diff do it.
#pragma once

namespace hx::midi {

enum class ExitCode : int {
    Success = 0,   // done; it matched; the two are the same
    Different = 1, // it did not match; the two differ
    Refused = 2,   // an error in the command line or in the data; nothing was done
};

} // namespace hx::midi
