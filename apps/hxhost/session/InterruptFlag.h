// Ctrl-C as a flag, for as long as something must not be cut off in the middle.
#pragma once

#include <atomic>

namespace hx::host {

// While it lives, the first Ctrl-C (or termination signal, or closing of the terminal) sets the
// flag; a second one ends the program at once. One at a time.
class InterruptFlag {
public:
    InterruptFlag();
    ~InterruptFlag();
    InterruptFlag(const InterruptFlag&) = delete;
    InterruptFlag& operator=(const InterruptFlag&) = delete;

    const std::atomic<bool>* flag() const;
};

// What Ctrl-C does: sets the flag that lives, and ends the program at once where none does.
void interruptProgram();

} // namespace hx::host
