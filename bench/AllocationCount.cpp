#include "bench/AllocationCount.h"

#include <cstddef>

namespace {

/** Not atomic: the benchmarks run in one thread, and a locked addition would cost more than
 * malloc(). */
std::uint64_t count = 0;

} // namespace

std::uint64_t hxbench::allocationCount()
{
    return count;
}

#ifdef __GLIBC__

// Qt's containers call malloc() and realloc() themselves, so counting operator new is not enough:
// these stand in front of the C library's own.
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t items, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

void* malloc(std::size_t size)
{
    ++count;
    return __libc_malloc(size);
}

void* calloc(std::size_t items, std::size_t size)
{
    ++count;
    return __libc_calloc(items, size);
}

void* realloc(void* memory, std::size_t size)
{
    ++count;
    return __libc_realloc(memory, size);
}

} // extern "C"

bool hxbench::countsAllocations()
{
    return true;
}

#else

bool hxbench::countsAllocations()
{
    return false;
}

#endif
