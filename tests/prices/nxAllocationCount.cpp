// Replaces the program's operator new by one that counts.
#include "tests/prices/nxAllocationCount.h"

#include <cstdlib>
#include <new>

thread_local std::size_t nxAllocationCount::made = 0;

#if !NX_THREAD_SANITIZER
void* operator new(std::size_t size)
{
    if (void* const memory = operator new(size, std::nothrow))
        return memory;
    throw std::bad_alloc();
}

void* operator new(std::size_t size, std::nothrow_t const& /*tag*/) noexcept
{
    ++nxAllocationCount::made;
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
