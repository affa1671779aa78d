// A limit on the size of files, as a program meets it.
#pragma once

#include <csignal>

namespace hx {

// A file that reaches the limit is a full disk: writing fails, and what is under way goes on.
inline void outliveFileSizeLimit()
{
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN);
#endif
}

} // namespace hx
