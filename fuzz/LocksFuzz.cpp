// Locks and semaphores on one thread, by the calls that never wait, against counters; and locks on two threads.

#include "fuzz/FuzzInput.h"

#include "core/concurrency/nxCondition.h"
#include "core/concurrency/nxMutex.h"
#include "core/concurrency/nxReaderWriterLock.h"
#include "core/concurrency/nxSemaphore.h"
#include "core/concurrency/nxSpinLock.h"

#include <thread>

namespace
{
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
        switch (input.Below(14))
        {
        case 0:
            FUZZ_CHECK(_semaphore.Post().IsOK());
            ++_count;
            break;
        case 1: Take(_semaphore.TryWait(), NX_ERR_THR_LOCKED); break;
        case 2: Take(_semaphore.TimedWait(-1.0 * input.Below(3)), NX_ERR_THR_TIMEDOUT); break;
        case 3: Take(_semaphore.TimedWait_Microseconds(input.Below(3)), NX_ERR_THR_TIMEDOUT); break;
        case 4: TryOdd(input.Take<double>()); break;
        case 5:
            FUZZ_CHECK(_recursive.TryLock().IsOK());
            ++_depth;
            break;
        case 6:
            FUZZ_EQUAL(_recursive.Unlock().IsOK(), _depth > 0);
            _depth -= _depth > 0 ? 1 : 0;
            break;
        case 7:
            FUZZ_EQUAL(_plain.TryLock().IsOK(), !_isPlainLocked);
            _isPlainLocked = true;
            break;
        case 8:
            if (_isPlainLocked)
                FUZZ_CHECK(_plain.Unlock().IsOK());
            _isPlainLocked = false;
            break;
        case 9:
            FUZZ_EQUAL(_spin.TryLock().IsOK(), !_isSpinLocked);
            _isSpinLocked = true;
            break;
        case 10:
            if (_isSpinLocked)
                FUZZ_CHECK(_spin.Unlock().IsOK());
            _isSpinLocked = false;
            break;
        case 11: ShareOrOwn(input); break;
        case 12: AskFromElsewhere(); break;
        default: FUZZ_CHECK(_condition.Signal().IsOK());
        }
        FUZZ_EQUAL(_semaphore.GetValue(), _count);
    }

    ~Session()
    {
        for (; _depth > 0; --_depth)
            (void)_recursive.Unlock();
        if (_isPlainLocked)
            (void)_plain.Unlock();
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
        _count -= _count > 0 ? 1 : 0;
    }

    /// Waits of any length but a long one: with a count there is no wait at all.
    void TryOdd(double seconds)
    {
        if (_count == 0 && seconds > 1e-3)
            return;
        nxErrorEnum const result = _semaphore.TimedWait(seconds);
        if (result != NX_ERR_INVALID_PARAMETER) // for what is no number
            Take(result, NX_ERR_THR_TIMEDOUT);
    }

    void ShareOrOwn(FuzzInput& input)
    {
        switch (input.Below(4))
        {
        case 0:
        {
            bool const shared = _shared.TryReadLock().IsOK();
            FUZZ_EQUAL(shared, !_isOwned);
            _readers += shared ? 1 : 0;
            break;
        }
        case 1:
            if (_readers > 0)
                FUZZ_CHECK(_shared.ReadUnlock().IsOK());
            _readers -= _readers > 0 ? 1 : 0;
            break;
        case 2:
        {
            bool const isFree = !_isOwned && _readers == 0;
            FUZZ_EQUAL(_shared.TryWriteLock().IsOK(), isFree);
            _isOwned = _isOwned || isFree;
            break;
        }
        default:
            if (_isOwned)
                FUZZ_CHECK(_shared.WriteUnlock().IsOK());
            _isOwned = false;
        }
    }

    /// Another thread finds locked what is locked here.
    void AskFromElsewhere()
    {
        std::thread(
            [this]
            {
                nxErrorEnum const result = _recursive.TryLock();
                FUZZ_EQUAL(result.IsOK(), _depth == 0);
                FUZZ_CHECK(result.IsOK() || result == NX_ERR_THR_LOCKED);
                FUZZ_CHECK(result.IsOK() ? _recursive.Unlock().IsOK()
                                         : _recursive.Unlock() == NX_ERR_THR_MISMATCH);
            })
            .join();
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

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    Session session(input);
    while (!input.IsEmpty())
        session.Step(input);
    return 0;
}
