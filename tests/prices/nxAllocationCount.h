#pragma once

#include <cstddef>

/// Counts what the calling thread allocates by `new` from here on.
class nxAllocationCount
{
public:
    /// @return false under the thread sanitizer, which keeps `new` to itself; nothing is counted then.
    static bool IsPossible();

    nxAllocationCount();
    std::size_t Get() const;

private:
    std::size_t _start;
};
