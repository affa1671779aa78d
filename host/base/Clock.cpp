#include "host/base/Clock.h"

#include <chrono>
#include <thread>

namespace hx {

Microseconds SteadyClock::now()
{
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

void SteadyClock::sleepUntil(Microseconds until)
{
    const Microseconds left = until - now();
    if (left > 0)
        std::this_thread::sleep_for(std::chrono::microseconds(left));
}

} // namespace hx
