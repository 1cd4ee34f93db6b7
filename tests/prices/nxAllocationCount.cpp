// Replaces the program's operator new by one that counts.
#include "tests/prices/nxAllocationCount.h"

#include <cstdlib>
#include <new>

#if defined(__SANITIZE_THREAD__)
#define NX_COUNTS_ALLOCATIONS 0
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define NX_COUNTS_ALLOCATIONS 0
#endif
#endif
#ifndef NX_COUNTS_ALLOCATIONS
#define NX_COUNTS_ALLOCATIONS 1
#endif

namespace
{
thread_local std::size_t allocations = 0;
}

bool nxAllocationCount::IsPossible()
{
    return NX_COUNTS_ALLOCATIONS != 0;
}

nxAllocationCount::nxAllocationCount() : _start(allocations)
{
}

std::size_t nxAllocationCount::Get() const
{
    return allocations - _start;
}

#if NX_COUNTS_ALLOCATIONS
void* operator new(std::size_t size)
{
    ++allocations;
    if (void* const memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}
#endif
