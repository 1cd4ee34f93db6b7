#pragma once

#include "core/concurrency/nxConditionRaw.h"
#include "core/concurrency/nxMutex.h"
#include "core/numbers/nxDoubleValueWrapper.h"

/// @file
/// What others know of the log writer's cycles. For the sources of this folder.

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
