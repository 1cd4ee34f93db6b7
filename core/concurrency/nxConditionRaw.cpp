#include "core/concurrency/nxConditionRaw.h"

#include "core/concurrency/nxHeldAcrossForks.h"
#include "core/concurrency/nxMutex.h"
#include "core/concurrency/nxMutexGuard.h"
#include "core/concurrency/nxWaitTime.h"
#include "core/logging/nxLogSite.h"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <new>
#include <set>

namespace
{
// The conditions that are byte copies. Destroying one as if it were a condition would wait for ever for
// waiters who know only the original. There is no room for a mark in the object itself.
class Copies
{
public:
    // Never destroyed: conditions may outlive every static object. Needs no memory, so that nothing can throw.
    static Copies& GetInstance()
    {
        alignas(Copies) static std::byte room[sizeof(Copies)];
        static Copies& instance = *new (room) Copies;
        return instance;
    }

    void Add(nxConditionRaw const* copy)
    {
        nxMutexGuard guard(_mutex);
        try
        {
            _copies.insert(copy);
        }
        catch (std::bad_alloc const&)
        {
            _areSomeUnknown = true;
        }
        _any.store(true, std::memory_order_relaxed);
    }

    // @return whether it is a copy, or may be one that there was no memory to remember.
    bool Remove(nxConditionRaw const* condition)
    {
        nxMutexGuard guard(_mutex);
        return _copies.erase(condition) != 0 || _areSomeUnknown;
    }

    // For nxHeldAcrossForks.
    static nxMutex& GetMutex()
    {
        return GetInstance()._mutex;
    }

    // Whether there has ever been a copy, which is hardly the case: the others then pay nothing.
    static bool Any()
    {
        return _any.load(std::memory_order_relaxed);
    }

private:
    nxMutex _mutex;
    std::set<nxConditionRaw const*> _copies;
    bool _areSomeUnknown = false;
    static std::atomic<bool> _any;
};

constinit std::atomic<bool> Copies::_any = false;

[[maybe_unused]] bool const isHeldAcrossForks = nxHeldAcrossForks::Add(Copies::GetMutex);
} // namespace

nxConditionRaw::nxConditionRaw()
{
    (void)pthread_cond_init(&_condition, nullptr);
}

nxConditionRaw::~nxConditionRaw()
{
    if (Copies::Any() && Copies::GetInstance().Remove(this))
        return;
    (void)pthread_cond_destroy(&_condition);
}

nxConditionRaw& nxConditionRaw::operator=(nxConditionRaw const& other)
{
    if (this != &other)
    {
        Copies::GetInstance().Add(this);
        _condition = other._condition;
    }
    return *this;
}

nxErrorEnum nxConditionRaw::Signal()
{
    return pthread_cond_signal(&_condition) == 0 ? nxErrorEnum() : nxErrorEnum(NX_ERR_UNSPECIFIED);
}

nxErrorEnum nxConditionRaw::SignalAll()
{
    return pthread_cond_broadcast(&_condition) == 0 ? nxErrorEnum() : nxErrorEnum(NX_ERR_UNSPECIFIED);
}

nxErrorEnum nxConditionRaw::Wait(nxMutex& mutex)
{
    return pthread_cond_wait(&_condition, &mutex._mutex) == 0 ? nxErrorEnum()
                                                              : nxErrorEnum(NX_ERR_UNSPECIFIED);
}

nxErrorEnum nxConditionRaw::TimedWait(nxMutex& mutex, double seconds)
{
    std::timespec const deadline = nxWaitTime::Deadline(nxWaitTime::FromSeconds(seconds));
    switch (pthread_cond_timedwait(&_condition, &mutex._mutex, &deadline))
    {
    case 0: return nxErrorEnum();
    case ETIMEDOUT: return nxErrorEnum(NX_ERR_THR_TIMEDOUT);
    default: return nxErrorEnum(NX_ERR_UNSPECIFIED);
    }
}

// The attribute is destroyed on success alone.
int nxConditionRaw::_CreateShared()
{
    pthread_condattr_t attributes;
    if (int const result = pthread_condattr_init(&attributes); result != 0)
        return result;
    if (int const result = pthread_condattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED); result != 0)
        return result;
    if (int const result = pthread_cond_init(&_condition, &attributes); result != 0)
        return result;
    return pthread_condattr_destroy(&attributes);
}

nxErrorEnum nxConditionRaw::InitialiseAsShared()
{
    int const result = _CreateShared();
    if (result != 0)
    {
        NX_LOG(NX_ERR, "Condition could not be created in shared memory. Result : " << result);
        return nxErrorEnum(NX_ERR_UNSPECIFIED);
    }
    return nxErrorEnum();
}
