#include "core/logging/nxLogDeferredWriteThread.h"

#include "core/concurrency/nxMutexGuard.h"
#include "core/logging/nxLogEntriesQueue.h"
#include "core/logging/nxLogManager.h"
#include "core/logging/nxLogSlots.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxConfigurationKeyText.h"
#include "core/text/nxStringHelper.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <new>

namespace
{

float ReadTimeBetweenFlushes()
{
    constexpr float usual = 0.1f;
    constexpr float least = 0.01f;
    constexpr double most = 1e6; // eleven days: beyond it nobody can tell a cycle from none

    double seconds = usual;
    std::string const text =
        nxCmdLineArgs::GetInstance().GetEnvValue(nxConfigurationKeyText::KVT_LOG_TIME_BETWEEN_FLUSHES);
    if (text.empty() || !nxStringHelper::SetFromString(text, seconds, '.').IsOK())
    {
        return usual;
    }
    return std::max(least, static_cast<float>(std::min(seconds, most)));
}

// Read once, as the log's other keys: a writer that is made later, as in a forked child, has the same cycle.
float GetTimeBetweenFlushes()
{
    static float const seconds = ReadTimeBetweenFlushes();
    return seconds;
}

} // namespace

void nxLogCycles::Begin()
{
    nxMutexGuard guard(_mutex);
    _hasWriter = true;
}

void nxLogCycles::TakingQueue()
{
    nxMutexGuard guard(_mutex);
    ++_taken;
}

void nxLogCycles::Written()
{
    nxMutexGuard guard(_mutex);
    ++_written;
    _writtenTaken = _taken;
    (void)_changed.SignalAll();
}

void nxLogCycles::End()
{
    nxMutexGuard guard(_mutex);
    _hasWriter = false;
    (void)_changed.SignalAll();
}

void nxLogCycles::WaitForNext(nxDoubleValueWrapper const& timeoutSeconds)
{
    // A wait of that many seconds is one without limit; as a deadline it would overflow.
    constexpr double longestWait = 1e9;
    using Clock = std::chrono::steady_clock;

    double const seconds = timeoutSeconds;
    bool const isLimited = !(seconds > longestWait); // a null is beyond it, too
    auto const start = Clock::now();
    nxMutexGuard guard(_mutex);
    unsigned long long const written = _written;
    while (_hasWriter && _written == written)
    {
        if (!isLimited)
        {
            (void)_changed.Wait(_mutex);
            continue;
        }
        double const left = seconds - std::chrono::duration<double>(Clock::now() - start).count();
        if (!(left > 0.0))
        {
            return;
        }
        (void)_changed.TimedWait(_mutex, left);
    }
}

void nxLogCycles::WaitForQueued()
{
    nxMutexGuard guard(_mutex);
    // What was queued up to now goes out with a batch that is taken after now.
    unsigned long long const taken = _taken;
    while (_hasWriter && _writtenTaken <= taken)
    {
        (void)_changed.Wait(_mutex);
    }
}

void nxLogCycles::LockBeforeFork()
{
    (void)_mutex.Lock();
}

void nxLogCycles::UnlockInParent()
{
    (void)_mutex.Unlock();
}

void nxLogCycles::RemakeInChild()
{
    new (&_mutex) nxMutex;
    new (&_changed) nxConditionRaw;
    _hasWriter = false;
}

nxLogDeferredWriteThread::nxLogDeferredWriteThread(nxLogManager& manager, nxLogCycles& cycles,
                                                   unsigned long long reserveEntries)
    : _manager(manager), _cycles(cycles), _timeBetweenFlushes(GetTimeBetweenFlushes()),
      _reserveEntries(reserveEntries)
{
}

void nxLogDeferredWriteThread::SetReserveEntries(unsigned long long entries)
{
    _reserveEntries.store(std::min(entries, nxLogEntriesQueue::mostReserved), std::memory_order_relaxed);
}

nxErrorEnum nxLogDeferredWriteThread::Stop()
{
    _running.store(false, std::memory_order_release);
    _sleep.Wake();
    return Wait();
}

nxErrorEnum nxLogDeferredWriteThread::Run()
{
    _ReserveBatch();
    while (_running.load(std::memory_order_acquire))
    {
        if (_sleep.GetError() != 0)
        {
            std::printf("sem_init err %d, %d\n", -1, _sleep.GetError());
        }
        _sleep.Sleep(static_cast<double>(_timeBetweenFlushes));
        if (_running.load(std::memory_order_acquire))
        {
            _Cycle();
        }
    }
    nxLogSlots::Recycle(_batch);
    return nxErrorEnum();
}

// Without memory the queue's vector comes as it is, and the next cycle tries again.
void nxLogDeferredWriteThread::_ReserveBatch()
{
    try
    {
        _batch.reserve(_reserveEntries.load(std::memory_order_relaxed));
    }
    catch (std::bad_alloc const&)
    {
    }
}

void nxLogDeferredWriteThread::_Cycle()
{
    nxLogSlots::Recycle(_batch);
    _ReserveBatch();
    _cycles.TakingQueue();
    _manager.GetLogEntriesQueue().Swap(_batch);
    if (!_batch.empty())
    {
        _manager.ImmediateWrite(_batch);
        _manager.FlushDevices();
    }
    _cycles.Written();
}
