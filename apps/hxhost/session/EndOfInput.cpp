#include "apps/hxhost/session/EndOfInput.h"

#include "apps/hxhost/session/InterruptFlag.h"
#include "host/base/ExitCode.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <thread>

#include <unistd.h>

namespace hx::host {

namespace {

constexpr std::chrono::seconds timeToStop(5);

void readToTheEnd()
{
    char unused[256];
    ssize_t count = 1;
    while (count > 0 || (count < 0 && errno == EINTR))
        count = read(STDIN_FILENO, unused, sizeof unused);
}

} // namespace

void stopAtEndOfInput()
{
    std::thread([] {
        readToTheEnd();
        interruptProgram();
        std::this_thread::sleep_for(timeToStop);
        std::_Exit(int(ExitCode::Interrupted));
    }).detach();
}

} // namespace hx::host
