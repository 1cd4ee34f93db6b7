#pragma once

#include "core/concurrency/nxFunctorProcessor.h"

#include <memory>
#include <vector>

class nxFunctorThread;

/// @file
/// Several workers behind one functor queue.

/// Workers that compete for one queue: whoever is free takes the oldest functor. Nothing is assigned or
/// balanced.
class NX_CORE_API nxFunctorThreadPool : public nxFunctorProcessor
{
public:
    /// Makes that many workers and starts none.
    explicit nxFunctorThreadPool(unsigned int threadCount);

    /// Stops each worker, one after the other, then deletes them.
    ~nxFunctorThreadPool() override;

    /// Stops the workers one after the other: each is told only when the one before it has ended.
    /// @return OK.
    nxErrorEnum _Stop() override;

    /// Starts the workers; whether they could start is not reported.
    /// @return OK.
    nxErrorEnum _Start() override;

    void _SetFunctorQueueBase(nxFunctorQueueBase* queue) override;

private:
    nxFunctorThreadPool() = delete;
    nxFunctorThreadPool(nxFunctorThreadPool const&) = delete;
    nxFunctorThreadPool& operator=(nxFunctorThreadPool const&) = delete;

    std::vector<std::unique_ptr<nxFunctorThread>> _workers;
};
