// Hands orders to a pool of threads and counts them when they have been worked off.
#include "core/concurrency/nxFunctor.h"
#include "core/concurrency/nxFunctorQueue.h"
#include "core/concurrency/nxFunctorThreadPool.h"
#include "core/concurrency/nxMutex.h"
#include "core/concurrency/nxMutexGuard.h"
#include "core/concurrency/nxSemaphore.h"

#include <cstdio>

namespace
{
struct Tally
{
    nxMutex mutex;
    int volume = 0;
    nxSemaphore counted = nxSemaphore(0);
};

class CountOrder : public nxFunctor
{
public:
    CountOrder(Tally& tally, int volume) : _tally(tally), _volume(volume)
    {
    }

protected:
    void _Invoke() override
    {
        {
            nxMutexGuard guard(_tally.mutex); // unlocked when the scope ends
            _tally.volume += _volume;
        }
        (void)_tally.counted.Post();
    }

private:
    Tally& _tally;
    int _volume;
};
} // namespace

int main()
{
    constexpr int orders = 100;
    Tally tally;
    nxFunctorQueue queue;
    queue.Create(new nxFunctorThreadPool(4));
    for (int order = 1; order <= orders; ++order)
        (void)queue.Push(new CountOrder(tally, order)); // the queue deletes it
    for (int order = 0; order < orders; ++order)
        (void)tally.counted.Wait();
    (void)queue.Stop(); // before the queue is destroyed
    std::printf("%d orders of %d lots in all\n", orders, tally.volume);
    return tally.volume == 5050 ? 0 : 1;
}
