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

// `object` as an object of the second declaration. To the optimiser the two have nothing to do with each
// other: without the barrier it leaves out what an inlined constructor writes to the one, the pointer to
// the table before all, because nobody reads it there, and concludes that no call through the other can
// reach it.
template <typename Frozen>
Frozen* throughFrozenTable(void* object)
{
    asm volatile("" : "+r"(object) : : "memory");
    return static_cast<Frozen*>(object);
}
