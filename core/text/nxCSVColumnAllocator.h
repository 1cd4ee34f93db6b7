#pragma once

#include "core/text/nxCSVRowMemory.h"

#include <cstddef>

/// @file
/// The columns of a row of delimited text in the memory of rows. For nxCSVFileRow.

/// The allocator of a row's columns. All of them are equal.
template <typename T>
struct nxCSVColumnAllocator
{
    static_assert(alignof(T) <= alignof(void*));
    using value_type = T;

    nxCSVColumnAllocator() = default;
    template <typename Other>
    nxCSVColumnAllocator(nxCSVColumnAllocator<Other> const&) noexcept
    {
    }

    T* allocate(std::size_t count)
    {
        return static_cast<T*>(nxCSVRowMemory::Allocate(count * sizeof(T)));
    }

    void deallocate(T* memory, std::size_t) noexcept
    {
        nxCSVRowMemory::Free(memory);
    }

    friend bool operator==(nxCSVColumnAllocator const&, nxCSVColumnAllocator const&) = default;
};
