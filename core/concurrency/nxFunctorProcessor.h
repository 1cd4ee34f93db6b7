#pragma once

#include "core/platform/nxExport.h"
#include "core/vocabulary/nxErrorEnum.h"

class nxFunctorQueueBase;

/// @file
/// What drains a functor queue.

/// The abstract worker behind a queue: nxFunctorThread or nxFunctorThreadPool. A queue that is given one owns
/// it, connects it, starts it and, when told to, stops it; nobody else calls these operations.
class NX_CORE_API nxFunctorProcessor
{
public:
    virtual ~nxFunctorProcessor() = default;

    /// Lets nothing more be run and waits until what runs now has ended.
    virtual nxErrorEnum _Stop() = 0;

    /// Begins to run what the connected queue holds.
    virtual nxErrorEnum _Start() = 0;

    /// Connects a queue, which stays the owner of both.
    virtual void _SetFunctorQueueBase(nxFunctorQueueBase* queue) = 0;

protected:
    nxFunctorProcessor() = default;
    nxFunctorProcessor(nxFunctorProcessor const&) = default;
    nxFunctorProcessor& operator=(nxFunctorProcessor const&) = default;
};
