#include "core/concurrency/nxBarrier.h"

nxBarrier::nxBarrier(unsigned int count)
{
    if (pthread_barrier_init(&_barrier, nullptr, count) != 0)
    {
        // The calls below divide by the count of a barrier that was never made; this one holds nobody back.
        (void)pthread_barrier_init(&_barrier, nullptr, 1);
    }
}

nxBarrier::~nxBarrier()
{
    (void)pthread_barrier_destroy(&_barrier);
}

nxErrorEnum nxBarrier::Wait()
{
    (void)pthread_barrier_wait(&_barrier);
    return nxErrorEnum();
}
