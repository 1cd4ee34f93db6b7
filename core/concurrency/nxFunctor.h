#pragma once

#include "core/platform/nxExport.h"

/// @file
/// A unit of work for the functor queues.

/// Work that is done once, on whichever thread gets it. Pushed on a queue, it belongs to the queue, and
/// whoever runs it deletes it afterwards.
class NX_CORE_API nxFunctor
{
public:
    nxFunctor() = default;
    nxFunctor(nxFunctor const&) = default;
    nxFunctor& operator=(nxFunctor const&) = default;
    virtual ~nxFunctor() = default;

    /// Does the work. What it throws is caught nowhere: on a worker it ends the process.
    void operator()()
    {
        _Invoke();
    }

protected:
    /// The work.
    virtual void _Invoke() = 0;
};
