#include "core/logging/nxLogEntriesQueue.h"

#include "core/logging/nxLog.h"
#include "core/logging/nxLogSpinGuard.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <memory>

namespace
{

/// Says once in a process that the queue takes a good part of the memory, some 200 MB.
void WarnWhenMany(unsigned long long queued)
{
    constexpr unsigned long long many = 500000;
    static constinit std::atomic<bool> hasWarned = false;

    if (queued >= many && !hasWarned.exchange(true))
        (void)std::fprintf(stderr, "The log's queue has grown to %llu statements: its devices are slow.\n",
                           queued);
}

} // namespace

nxLogEntriesQueue::~nxLogEntriesQueue()
{
    for (nxLog* const log : _logs)
        delete log;
}

void nxLogEntriesQueue::Push(nxLog& log)
{
    std::unique_ptr<nxLog> copy(log.CreateCopyWithOwnershipTransfer());
    while (!_TryPush(copy.get()))
    {
        constexpr unsigned long long firstCapacity = 64;
        unsigned long long const queued = GetCapacity();
        WarnWhenMany(queued);
        _Grow(std::max(firstCapacity, 2 * queued));
    }
    (void)copy.release();
}

bool nxLogEntriesQueue::_TryPush(nxLog* log)
{
    nxLogSpinGuard guard(_lock);
    if (_logs.size() == _logs.capacity())
        return false;
    _logs.push_back(log);
    return true;
}

// The allocator may be slow, so the new storage is fetched before the lock is taken and the old one freed after it.
void nxLogEntriesQueue::_Grow(unsigned long long capacity)
{
    std::vector<nxLog*> larger;
    larger.reserve(capacity);

    nxLogSpinGuard guard(_lock);
    if (_logs.capacity() < larger.capacity() && _logs.size() <= larger.capacity())
    {
        larger.insert(larger.end(), _logs.begin(), _logs.end());
        _logs.swap(larger);
    }
}

void nxLogEntriesQueue::Swap(std::vector<nxLog*>& logs)
{
    nxLogSpinGuard guard(_lock);
    _logs.swap(logs);
}

void nxLogEntriesQueue::Reserve(unsigned long long entries)
{
    unsigned long long const capacity = std::min(entries, mostReserved);
    if (GetCapacity() < capacity)
        _Grow(capacity);
}

unsigned long long nxLogEntriesQueue::GetCapacity()
{
    nxLogSpinGuard guard(_lock);
    return _logs.capacity();
}
