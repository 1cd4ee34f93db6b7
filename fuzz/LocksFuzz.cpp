// Locks and semaphores on one thread, by the calls that never wait, against counters; and locks on two threads.

#include "fuzz/FuzzInput.h"

#include "core/concurrency/nxCondition.h"
#include "core/concurrency/nxMutex.h"
#include "core/concurrency/nxReaderWriterLock.h"
#include "core/concurrency/nxSemaphore.h"
#include "core/concurrency/nxSpinLock.h"

#include <functional>
#include <thread>

#include <semaphore.h>

namespace
{
std::function<void()> next;
sem_t start;
sem_t end;

/// Runs something on another thread, which is the same for all inputs, and waits for it.
void RunElsewhere(std::function<void()> action)
{
    next = std::move(action);
    sem_post(&start);
    while (sem_wait(&end) != 0) // the fuzzer's alarm interrupts it
    {
    }
}

class Session
{
public:
    explicit Session(FuzzInput& input)
        : _count(static_cast<int>(input.Below(4))), _semaphore(static_cast<unsigned int>(_count)),
          _recursive(true), _plain(false)
    {
    }

    void Step(FuzzInput& input)
    {
        switch (input.Below(17))
        {
        case 0: FUZZ_CHECK(_semaphore.Post().IsOK()), ++_count; break;
        case 1: Take(_semaphore.TryWait(), NX_ERR_THR_LOCKED); break;
        case 2: Take(_semaphore.TimedWait(-1.0 * input.Below(3)), NX_ERR_THR_TIMEDOUT); break;
        case 3: Take(_semaphore.TimedWait_Microseconds(0), NX_ERR_THR_TIMEDOUT); break;
        case 4: WaitAnyTime(input.Take<double>()); break;
        case 5: FUZZ_CHECK(_recursive.TryLock().IsOK()), ++_depth; break;
        case 6: FUZZ_EQUAL(_recursive.Unlock().IsOK(), _depth > 0), _depth -= _depth > 0; break;
        case 7: TryLock(_plain, _isPlainLocked); break;
        case 8: Unlock(_plain, _isPlainLocked); break;
        case 9: TryLock(_spin, _isSpinLocked); break;
        case 10: Unlock(_spin, _isSpinLocked); break;
        case 11: FUZZ_EQUAL(_shared.TryReadLock().IsOK(), !_isOwned), _readers += !_isOwned; break;
        case 12:
            if (_readers > 0)
                FUZZ_CHECK(_shared.ReadUnlock().IsOK()), --_readers;
            break;
        case 13:
            FUZZ_EQUAL(_shared.TryWriteLock().IsOK(), !_isOwned && _readers == 0);
            _isOwned = _isOwned || _readers == 0;
            break;
        case 14:
            if (_isOwned)
                FUZZ_CHECK(_shared.WriteUnlock().IsOK()), _isOwned = false;
            break;
        case 15: AskFromElsewhere(); break;
        default: FUZZ_CHECK(_condition.Signal().IsOK());
        }
        FUZZ_EQUAL(_semaphore.GetValue(), _count);
    }

    ~Session()
    {
        for (; _depth > 0; --_depth)
            (void)_recursive.Unlock();
        Unlock(_plain, _isPlainLocked);
        Unlock(_spin, _isSpinLocked);
        for (; _readers > 0; --_readers)
            (void)_shared.ReadUnlock();
        if (_isOwned)
            (void)_shared.WriteUnlock();
    }

private:
    void Take(nxErrorEnum const& result, nxEnumValue whenNone)
    {
        if (result == NX_ERR_THR_INTERRUPTED) // by the fuzzer's own alarm
            return;
        FUZZ_EQUAL(result.GetValue(), static_cast<unsigned int>(_count > 0 ? NX_UNDEFINED : whenNone));
        _count -= _count > 0;
    }

    /// With a count there is no wait, however long it may last.
    void WaitAnyTime(double seconds)
    {
        if (_count == 0 &&
            !(seconds > -1e9 && seconds <= 0)) // far below zero, the 32 bits of it may be above
            return;
        nxErrorEnum const result = _semaphore.TimedWait(seconds);
        if (result != NX_ERR_INVALID_PARAMETER) // for what is no number
            Take(result, NX_ERR_THR_TIMEDOUT);
    }

    template <class LockT>
    void TryLock(LockT& lock, bool& isLocked)
    {
        FUZZ_EQUAL(lock.TryLock().IsOK(), !isLocked);
        isLocked = true;
    }

    template <class LockT>
    void Unlock(LockT& lock, bool& isLocked)
    {
        if (isLocked)
            FUZZ_CHECK(lock.Unlock().IsOK());
        isLocked = false;
    }

    /// Another thread finds locked what is locked here.
    void AskFromElsewhere()
    {
        nxErrorEnum locked;
        nxErrorEnum unlocked;
        RunElsewhere([&] { locked = _recursive.TryLock(), unlocked = _recursive.Unlock(); });
        FUZZ_CHECK(_depth == 0 ? locked.IsOK() : locked == NX_ERR_THR_LOCKED);
        FUZZ_CHECK(_depth == 0 ? unlocked.IsOK() : unlocked == NX_ERR_THR_MISMATCH);
    }

    int _count;
    nxSemaphore _semaphore;
    nxMutex _recursive;
    int _depth = 0;
    nxMutex _plain;
    bool _isPlainLocked = false;
    nxSpinLock _spin;
    bool _isSpinLocked = false;
    nxReaderWriterLock _shared;
    int _readers = 0;
    bool _isOwned = false;
    nxCondition _condition;
};
} // namespace

void FuzzStart()
{
    sem_init(&start, 0, 0);
    sem_init(&end, 0, 0);
    std::thread(
        []
        {
            for (;; sem_post(&end))
                sem_wait(&start), next();
        })
        .detach();
}

void FuzzOne(FuzzInput& input)
{
    Session session(input);
    while (input.HasStep())
        session.Step(input);
}
