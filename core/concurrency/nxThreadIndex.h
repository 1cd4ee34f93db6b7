#pragma once

#include "core/concurrency/nxMutex.h"
#include "core/platform/nxExport.h"

/// @file
/// Small numbers for the threads of a process.

/// Numbers the threads 0, 1, 2, ... in the order in which they first ask, so that a log line can name its
/// thread. A thread that never asks has no number; a number is never given back, also when its thread ends.
class NX_CORE_API nxThreadIndex
{
public:
    ~nxThreadIndex() = default;

    /// The calling thread's number. Takes a lock on a thread's first call only. Works before `main` and until
    /// the process has ended.
    static unsigned int GetIndexOfCurrentThread();

    /// The number for the next thread that asks first, guarded by the mutex below.
    static unsigned int _nextIndex;

    /// Ready before any code runs, and never destroyed.
    static nxMutex& _nextIndexMutex;

private:
    nxThreadIndex();

    unsigned int _index;
};
