#include "core/logging/nxLogDeferredWriteThread.h"

#include "core/logging/nxLogCycles.h"
#include "core/logging/nxLogEntriesQueue.h"
#include "core/logging/nxLogManager.h"
#include "core/logging/nxLogSlots.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxConfigurationKeyText.h"
#include "core/text/nxStringHelper.h"

#include <algorithm>
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
        return usual;
    return std::max(least, static_cast<float>(std::min(seconds, most)));
}

// Read once, as the log's other keys: a writer that is made later, as in a forked child, has the same cycle.
float GetTimeBetweenFlushes()
{
    static float const seconds = ReadTimeBetweenFlushes();
    return seconds;
}

} // namespace

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
            std::printf("sem_init err %d, %d\n", -1, _sleep.GetError());
        _sleep.Sleep(static_cast<double>(_timeBetweenFlushes));
        if (_running.load(std::memory_order_acquire))
            _Cycle();
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
