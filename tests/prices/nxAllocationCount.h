#pragma once

#include <cstddef>

/// Counts what the calling thread allocates by `new` from here on.
class nxAllocationCount
{
public:
    nxAllocationCount();
    std::size_t Get() const;

private:
    std::size_t _start;
};
