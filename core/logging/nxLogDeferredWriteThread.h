#pragma once

#include "core/concurrency/nxThread.h"
#include "core/platform/nxInterruptibleSleep.h"

#include <atomic>
#include <vector>

/// @file
/// The thread that writes the log. For the sources of this folder.

class nxLog;
class nxLogCycles;
class nxLogManager;

/// Takes the queue by the clock, writes it to the devices and flushes them. Nobody wakes it but Stop().
class nxLogDeferredWriteThread : public nxThread
{
public:
    /// The process's first writer reads the length of a cycle from the configuration, for all later ones too.
    /// @param reserveEntries  the room that the batch is kept at.
    nxLogDeferredWriteThread(nxLogManager& manager, nxLogCycles& cycles, unsigned long long reserveEntries);

    nxErrorEnum Run() override;

    /// Sets the room that the batch is kept at, from the next cycle on, cut to what a reservation gives.
    void SetReserveEntries(unsigned long long entries);

    /// Lets the present cycle end and waits for the end of the thread.
    /// @return what Wait() does; NX_ERR_THR_DEADLOCK when called by the writer itself, which ends by itself then.
    nxErrorEnum Stop();

private:
    void _ReserveBatch();
    void _Cycle();

    nxLogManager& _manager;
    nxLogCycles& _cycles;
    std::atomic<bool> _running = true;
    float _timeBetweenFlushes; // seconds
    std::atomic<unsigned long long> _reserveEntries;
    std::vector<nxLog*> _batch;
    nxPlatform::InterruptibleSleep _sleep;
};
