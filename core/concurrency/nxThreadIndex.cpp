#include "core/concurrency/nxThreadIndex.h"

#include "core/concurrency/nxHeldAcrossForks.h"
#include "core/concurrency/nxMutexGuard.h"

namespace
{
// A mutex that outlives the destruction of static objects: threads may log until the very end.
union NeverDestroyedMutex
{
    nxMutex mutex;

    constexpr NeverDestroyedMutex() : mutex()
    {
    }
    ~NeverDestroyedMutex()
    {
    }
};

constinit NeverDestroyedMutex nextIndexMutex;

nxMutex& GetNextIndexMutex()
{
    return nextIndexMutex.mutex;
}

[[maybe_unused]] bool const isHeldAcrossForks = nxHeldAcrossForks::Add(GetNextIndexMutex);
} // namespace

constinit unsigned int nxThreadIndex::_nextIndex = 0;
constinit nxMutex& nxThreadIndex::_nextIndexMutex = nextIndexMutex.mutex;

nxThreadIndex::nxThreadIndex()
{
    nxMutexGuard guard(_nextIndexMutex);
    _index = _nextIndex++;
}

unsigned int nxThreadIndex::GetIndexOfCurrentThread()
{
    static thread_local nxThreadIndex const current;
    return current._index;
}
