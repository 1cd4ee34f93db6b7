#pragma once

#include "core/concurrency/nxMutex.h"
#include "core/logging/nxLogEntriesQueue.h"
#include "core/numbers/nxDoubleValueWrapper.h"
#include "core/platform/nxExport.h"
#include "core/vocabulary/nxErrorEnum.h"
#include "core/vocabulary/nxLogLevelEnum.h"

#include <atomic>
#include <vector>

/// @file
/// The process-wide log.

class nxLog;
class nxLogCycles;
class nxLogDeferredWriteThread;
class nxLogDevice;

/// What lies between log statements and log devices: the minimum level, the devices, and the queue of finished
/// statements with the thread that writes them.
///
/// In deferred mode, the usual one, Write() queues the statement; the writer thread takes what is queued every 0.1
/// seconds, hands it to each device and flushes. With KVT_LOG_FORCE_FLUSH each statement is written and flushed before
/// Write() returns, and there is no writer. Statements of one thread stay in order; nothing is ever discarded.
///
/// The manager is built by the first use of the log, reads its keys then and never again, and is never destroyed. When
/// the process exits, a handler registered at that moment runs Destroy(); what is logged later is lost quietly.
///
/// | key | effect | when absent |
/// |---|---|---|
/// | KVT_LOG_LEVEL | minimum level, 0 for Debug to 7 for Fatal; any other number lets all pass, text is Debug | Info |
/// | KVT_LOG_FORCE_FLUSH | TRUE or YES: write before Write() returns | deferred |
/// | KVT_LOG_BUFF_RESERVE_ENTRIES | room of the queue from the start, at most 20000 | none |
/// | KVT_LOG_TIME_BETWEEN_FLUSHES | seconds of a cycle, at least 0.01 | 0.1 |
/// | KVT_LOG_THREAD_INDEX | TRUE or YES: lines carry their thread's index | they don't |
/// | KVT_LOG_TO_CONSOLE | NO or FALSE: no console; TERSE or BRIEF: level and message only | whole lines |
///
/// A process may fork at any time. The child drops what was queued, since the parent writes it, and has a writer of
/// its own from its first statement on.
///
/// Any thread may call any operation. Locks nest in this order: that of Destroy(), that of the devices (recursive, so
/// that a device may log, register or unregister while it writes), then a device's own.
class NX_CORE_API nxLogManager
{
public:
    static nxLogManager& GetInstance();

    nxLogManager(nxLogManager const&) = delete;
    nxLogManager& operator=(nxLogManager const&) = delete;

    /// Whether statements of this level are wanted: the test at each log site, one load and one comparison.
    ///
    /// Until the manager is built, this is Info and above; a host that wants Debug from its first statement on calls
    /// GetInstance() first.
    static bool ShouldLog(nxLogLevelEnum const& level)
    {
        return level.GetValue() >= _minimumLogLevel.load(std::memory_order_relaxed);
    }

    /// Queues or writes the statement, unless its level is below the minimum. In deferred mode its text is gone
    /// afterwards.
    void Write(nxLog& log);

    /// Hands the statement to each device, and queues and flushes nothing.
    void ImmediateWrite(nxLog const& log);

    /// The same with all statements: each device sees all of them before the next device sees the first.
    void ImmediateWrite(std::vector<nxLog*> const& logs);

    /// Flushes each device.
    void FlushDevices();

    /// Adds a device, which stays the caller's and must live until it is unregistered. A device that is listed already
    /// stays where it is.
    void RegisterLogDevice(nxLogDevice* device);

    /// Removes a device; nothing is called on it. Once this returns, no other thread is inside the device.
    void UnregisterLogDevice(nxLogDevice* device);

    /// Removes all devices; nothing is called on them.
    void UnregisterAllLogDevices();

    /// Ends the log: stops the writer, writes and flushes what is queued, then calls Destroy() of each device and
    /// removes them all. In deferred mode, what is logged later is queued and not written.
    /// @return OK.
    nxErrorEnum Destroy();

    /// Makes room for so many statements, at most 20000, in the queue and in the writer's batch, and has their memory
    /// ready. Not for devices.
    void SetRecommendedBufferCapacity(unsigned long long entries);

    /// Waits for the end of the writer's next cycle, at once when there is no writer. A statement that was logged just
    /// before may need the cycle after that one. Not for devices, whose Write() the cycle waits for.
    /// @param timeoutSeconds  the longest wait; null and no change: without limit.
    void WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper const& timeoutSeconds);

    /// Whether lines carry their thread's index.
    bool GetLogThreadIndex() const
    {
        return _logThreadIndex;
    }

    /// False.
    bool GetLogThreadCPU() const
    {
        return _logThreadCPU;
    }

    nxLogEntriesQueue& GetLogEntriesQueue()
    {
        return _entriesQueue;
    }

private:
    friend class nxFileLogDevice;

    nxLogManager();
    ~nxLogManager() = delete;

    void _Reserve(unsigned long long entries);
    class _Pass;

    void _ReadLevel();
    void _RegisterConsole();
    void _StartWriter();
    void _RestartWriter();
    void _StopWriter();
    void _DestroyAllDevices();
    void _WaitForQueuedStatements();

    static nxLogManager& _Build();
    static void _DestroyAtExit();
    static bool _RegisterForkHandlers();
    static void _PrepareFork();
    static void _AfterForkInParent();
    static void _AfterForkInChild();
    void _LockForFork();
    void _UnlockInParent();
    void _RemakeInChild();

    nxMutex _devicesMutex;
    std::vector<nxLogDevice*> _devices; ///< null where a device was removed in the middle of a pass
    unsigned int _passes = 0;           ///< that are under way, one inside the other
    bool _forceFlush = true;
    nxLogDeferredWriteThread* _writeThread = nullptr;
    nxMutex _threadMutex;
    bool _logThreadIndex = false;
    bool _logThreadCPU = false;
    nxLogEntriesQueue _entriesQueue;
    nxLogCycles& _cycles;
    /// Set when a writer is due that isn't there: in a forked child, and after a thread could not be made.
    std::atomic<bool> _isWriterMissing = false;
    /// A thread is in Destroy().
    std::atomic<bool> _isBeingDestroyed = false;
    /// In a forked child, the object of the parent's writer.
    nxLogDeferredWriteThread* _inheritedWriteThread = nullptr;

    static std::atomic<unsigned int> _minimumLogLevel;
    static std::atomic<nxLogManager*> _instance;
    static bool const _forkHandlersRegistered;
};
