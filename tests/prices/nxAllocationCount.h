#pragma once

#include "tests/Sanitizer.h"

#include <cstddef>

/// Counts what the calling thread allocates by `new` from here on.
struct nxAllocationCount
{
    /// @return false under the thread sanitizer, which keeps `new` to itself; nothing is counted then.
    static constexpr bool IsPossible()
    {
        return !underThreadSanitizer;
    }

    std::size_t Get() const
    {
        return made - start;
    }

    static thread_local std::size_t made;
    std::size_t const start = made;
};
