// Replaces the program's operator new by one that counts.
#include "tests/prices/nxAllocationCount.h"
#include "tests/Sanitizer.h"

#include <cstdlib>
#include <new>

namespace
{
thread_local std::size_t allocations = 0;
}

bool nxAllocationCount::IsPossible()
{
    return !underThreadSanitizer;
}

nxAllocationCount::nxAllocationCount() : _start(allocations)
{
}

std::size_t nxAllocationCount::Get() const
{
    return allocations - _start;
}

#if !NX_THREAD_SANITIZER
void* operator new(std::size_t size)
{
    ++allocations;
    if (void* const memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

void* operator new(std::size_t size, std::nothrow_t const& /*tag*/) noexcept
{
    ++allocations;
    return std::malloc(size == 0 ? 1 : size);
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
