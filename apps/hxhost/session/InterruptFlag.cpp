#include "apps/hxhost/session/InterruptFlag.h"

#include "host/base/ExitCode.h"

#include <csignal>
#include <cstdlib>

namespace hx::host {

namespace {

std::atomic<bool> interrupted{false};
std::atomic<bool> isWatched{false}; // by a flag that lives
static_assert(std::atomic<bool>::is_always_lock_free, "signal handlers may not wait for a lock");

extern "C" void noteSignal(int number)
{
    interrupted.store(true);
    std::signal(number, SIG_DFL);
}

// A terminal that is closed; where nohup has it ignored, it stays so.
void onHangUp(void (*handler)(int))
{
#ifdef SIGHUP
    if (std::signal(SIGHUP, handler) == SIG_IGN)
        std::signal(SIGHUP, SIG_IGN);
#endif
}

} // namespace

InterruptFlag::InterruptFlag()
{
    interrupted.store(false);
    isWatched.store(true);
    std::signal(SIGINT, noteSignal);
    std::signal(SIGTERM, noteSignal);
    onHangUp(noteSignal);
}

InterruptFlag::~InterruptFlag()
{
    isWatched.store(false);
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    onHangUp(SIG_DFL);
}

const std::atomic<bool>* InterruptFlag::flag() const
{
    return &interrupted;
}

void interruptProgram()
{
    interrupted.store(true);
    if (!isWatched)
        std::_Exit(int(ExitCode::Interrupted));
}

} // namespace hx::host
