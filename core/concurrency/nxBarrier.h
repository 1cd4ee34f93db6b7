#pragma once

#include "core/platform/nxExport.h"
#include "core/platform/nxPThread.h"
#include "core/vocabulary/nxErrorEnum.h"

/// @file
/// A POSIX barrier.

/// Holds threads of this process back until a given number of them has arrived, and is then ready for the
/// next round. Failures are not reported, neither by the constructor nor by Wait(): a barrier whose count the
/// system refuses (zero is one) holds nobody back.
class NX_CORE_API nxBarrier
{
public:
    /// @param count  the number of threads that have to arrive.
    explicit nxBarrier(unsigned int count);
    ~nxBarrier();

    /// Waits for the others.
    /// @return always OK, to every thread alike.
    nxErrorEnum Wait();

private:
    nxBarrier(nxBarrier const&) = delete;
    nxBarrier& operator=(nxBarrier const&) = delete;

    pthread_barrier_t _barrier;
};
