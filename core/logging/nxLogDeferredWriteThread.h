#pragma once

#include "core/concurrency/nxConditionRaw.h"
#include "core/concurrency/nxMutex.h"
#include "core/concurrency/nxThread.h"
#include "core/numbers/nxDoubleValueWrapper.h"
#include "core/platform/nxInterruptibleSleep.h"

#include <atomic>
#include <vector>

/// @file
/// The thread that writes the log, and what others know of its cycles. For the sources of this folder.

class nxLog;
class nxLogManager;

/// Counts the writer's cycles for those who wait for one.
///
/// Belongs to the log manager and outlives every writer: a waiter that is woken late still finds it.
class nxLogCycles
{
public:
    /// A writer comes into being.
    void Begin();

    /// The writer is about to take what is queued.
    void TakingQueue();

    /// What was taken last has reached the devices.
    void Written();

    /// There is no writer any more; nobody waits.
    void End();

    /// Waits for the next Written(), whatever was taken. Returns at once when there is no writer.
    /// @param timeoutSeconds  null and no change: without limit.
    void WaitForNext(nxDoubleValueWrapper const& timeoutSeconds);

    /// Waits until all that was queued before the call has been written, or there is no writer.
    void WaitForQueued();

    /// Across a fork: holds all others back; the child makes everything anew, without a writer.
    void LockBeforeFork();
    void UnlockInParent();
    void RemakeInChild();

private:
    nxMutex _mutex;
    nxConditionRaw _changed;
    unsigned long long _taken = 0;
    unsigned long long _writtenTaken = 0; // the value of _taken that Written() found last
    unsigned long long _written = 0;
    bool _hasWriter = false;
};

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
