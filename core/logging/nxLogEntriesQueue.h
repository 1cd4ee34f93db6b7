#pragma once

#include "core/concurrency/nxSpinLock.h"
#include "core/platform/nxExport.h"

#include <vector>

/// @file
/// The queue between those who log and the writer.

class nxLog;

/// Finished statements in the order in which they were ended. Without a bound: a statement is never dropped, however
/// far the writer is behind.
///
/// All operations may come from any thread. The lock is held for a push or a swap and never while memory is fetched,
/// so nobody waits here for the disk or the allocator.
///
/// Fills cache lines of its own: what threads change here all the time lies together, and beside nothing that others
/// only read.
class alignas(64) NX_CORE_API nxLogEntriesQueue
{
public:
    /// The most that a reservation gives.
    static constexpr unsigned long long mostReserved = 20000;

    nxLogEntriesQueue() = default;

    /// Destroys what is still queued.
    ~nxLogEntriesQueue();

    nxLogEntriesQueue(nxLogEntriesQueue const&) = delete;
    nxLogEntriesQueue& operator=(nxLogEntriesQueue const&) = delete;

    /// Moves the statement's text into a copy and queues that. Want of memory throws and queues nothing.
    void Push(nxLog& log);

    /// Exchanges what is queued, storage included, for what the vector holds. The statements are then the caller's.
    void Swap(std::vector<nxLog*>& logs);

    /// Makes room for so many statements, at most `mostReserved`. Never makes room smaller.
    void Reserve(unsigned long long entries);

    /// How many statements there is room for.
    unsigned long long GetCapacity();

private:
    friend class nxLogManager;

    bool _TryPush(nxLog* log);
    void _Grow(unsigned long long capacity);

    nxSpinLock _lock;
    std::vector<nxLog*> _logs;
};
