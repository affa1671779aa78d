// Calling an object through a second declaration of its class, as a host built long ago does.
#pragma once

// The sanitizers would report exactly what these tests do on purpose.
#if defined(__clang__)
#define CALLS_THROUGH_FROZEN_TABLE __attribute__((no_sanitize("vptr", "function")))
#elif defined(__GNUC__)
#define CALLS_THROUGH_FROZEN_TABLE __attribute__((no_sanitize("vptr")))
#else
#define CALLS_THROUGH_FROZEN_TABLE
#endif

// `object` as an object of the second declaration. Where it came from is hidden from the optimiser,
// which would otherwise conclude that no call through that declaration can reach it.
template <typename Frozen>
Frozen* throughFrozenTable(void* object)
{
    void* volatile hidden = object;
    return static_cast<Frozen*>(hidden);
}
