// Functors from one producer through a queue and its workers, beside the thread pool of Boost.Asio; and the
// locks and the semaphore with their guards, beside the bare calls.
#include "core/concurrency/nxFunctor.h"
#include "core/concurrency/nxFunctorQueue.h"
#include "core/concurrency/nxFunctorThreadPool.h"
#include "core/concurrency/nxMutex.h"
#include "core/concurrency/nxMutexGuard.h"
#include "core/concurrency/nxSemaphore.h"
#include "core/concurrency/nxSpinLock.h"
#include "core/concurrency/nxSpinLockGuard.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <thread>
#include <vector>

#ifdef NX_BENCH_BOOST
#include <boost/asio/post.hpp>
#include <boost/asio/thread_pool.hpp>
#endif
#ifdef NX_BENCH_TBB
#include <oneapi/tbb/task_arena.h>
#endif
#if __has_include(<concurrentqueue/blockingconcurrentqueue.h>)
#define NX_BENCH_CONCURRENTQUEUE
#include <concurrentqueue/blockingconcurrentqueue.h>
#endif

namespace
{
constexpr int functorsPerRun = 1000000;

// The work: the least there is, so that what is measured is the way to it.
class Count : public nxFunctor
{
public:
    explicit Count(std::atomic<std::int64_t>& done) : _done(done)
    {
    }

protected:
    void _Invoke() override
    {
        _done.fetch_add(1, std::memory_order_relaxed);
    }

private:
    std::atomic<std::int64_t>& _done;
};

void WaitFor(std::atomic<std::int64_t> const& done, std::int64_t count)
{
    while (done.load(std::memory_order_relaxed) < count)
        std::this_thread::yield();
}

void QueueOfFunctors(benchmark::State& state)
{
    auto const workers = static_cast<unsigned int>(state.range(0));
    std::atomic<std::int64_t> done = 0;
    nxFunctorQueue queue;
    queue.Create(new nxFunctorThreadPool(workers));
    std::int64_t pushed = 0;
    for (auto _ : state)
    {
        for (int functor = 0; functor < functorsPerRun; ++functor)
            (void)queue.Push(new Count(done));
        pushed += functorsPerRun;
        WaitFor(done, pushed);
    }
    state.SetItemsProcessed(pushed);
    (void)queue.Stop();
}
BENCHMARK(QueueOfFunctors)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);

#ifdef NX_BENCH_BOOST
// The same functors, on the heap too; the pool copies the handler into an operation of its own.
void AsioThreadPool(benchmark::State& state)
{
    std::atomic<std::int64_t> done = 0;
    boost::asio::thread_pool pool(static_cast<std::size_t>(state.range(0)));
    std::int64_t pushed = 0;
    for (auto _ : state)
    {
        for (int functor = 0; functor < functorsPerRun; ++functor)
            boost::asio::post(pool, [work = std::make_unique<Count>(done)]() mutable { (*work)(); });
        pushed += functorsPerRun;
        WaitFor(done, pushed);
    }
    state.SetItemsProcessed(pushed);
    pool.join();
}
BENCHMARK(AsioThreadPool)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);

// The handler itself, without a functor.
void AsioThreadPoolHandlers(benchmark::State& state)
{
    std::atomic<std::int64_t> done = 0;
    boost::asio::thread_pool pool(static_cast<std::size_t>(state.range(0)));
    std::int64_t pushed = 0;
    for (auto _ : state)
    {
        for (int functor = 0; functor < functorsPerRun; ++functor)
            boost::asio::post(pool, [&done] { done.fetch_add(1, std::memory_order_relaxed); });
        pushed += functorsPerRun;
        WaitFor(done, pushed);
    }
    state.SetItemsProcessed(pushed);
    pool.join();
}
BENCHMARK(AsioThreadPoolHandlers)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);
#endif

#ifdef NX_BENCH_TBB
void TbbArena(benchmark::State& state)
{
    std::atomic<std::int64_t> done = 0;
    // One more than workers: a place is the caller's.
    tbb::task_arena arena(static_cast<int>(state.range(0)) + 1, 1);
    std::int64_t pushed = 0;
    for (auto _ : state)
    {
        for (int functor = 0; functor < functorsPerRun; ++functor)
            arena.enqueue([work = std::make_shared<Count>(done)] { (*work)(); });
        pushed += functorsPerRun;
        WaitFor(done, pushed);
    }
    state.SetItemsProcessed(pushed);
}
BENCHMARK(TbbArena)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);
#endif

#ifdef NX_BENCH_CONCURRENTQUEUE
// Its queue and threads by hand; a null pointer ends one of them.
void ConcurrentQueue(benchmark::State& state)
{
    std::atomic<std::int64_t> done = 0;
    moodycamel::BlockingConcurrentQueue<nxFunctor*> queue;
    std::vector<std::thread> workers;
    for (int worker = 0; worker < state.range(0); ++worker)
    {
        workers.emplace_back(
            [&]
            {
                nxFunctor* functor = nullptr;
                for (queue.wait_dequeue(functor); functor != nullptr; queue.wait_dequeue(functor))
                {
                    std::unique_ptr<nxFunctor> const owner(functor);
                    (*functor)();
                }
            });
    }
    std::int64_t pushed = 0;
    for (auto _ : state)
    {
        for (int functor = 0; functor < functorsPerRun; ++functor)
            queue.enqueue(new Count(done));
        pushed += functorsPerRun;
        WaitFor(done, pushed);
    }
    state.SetItemsProcessed(pushed);
    for (std::size_t worker = 0; worker < workers.size(); ++worker)
        queue.enqueue(nullptr);
    for (std::thread& worker : workers)
        worker.join();
}
BENCHMARK(ConcurrentQueue)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);
#endif

void MutexGuard(benchmark::State& state)
{
    nxMutex mutex;
    for (auto _ : state)
    {
        nxMutexGuard guard(mutex);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(MutexGuard);

void BareMutex(benchmark::State& state)
{
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    for (auto _ : state)
    {
        pthread_mutex_lock(&mutex);
        benchmark::ClobberMemory();
        pthread_mutex_unlock(&mutex);
    }
}
BENCHMARK(BareMutex);

void SpinLockGuard(benchmark::State& state)
{
    nxSpinLock lock;
    for (auto _ : state)
    {
        nxSpinLockGuard guard(lock);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(SpinLockGuard);

void BareSpinLock(benchmark::State& state)
{
    pthread_spinlock_t lock;
    pthread_spin_init(&lock, PTHREAD_PROCESS_PRIVATE);
    for (auto _ : state)
    {
        pthread_spin_lock(&lock);
        benchmark::ClobberMemory();
        pthread_spin_unlock(&lock);
    }
}
BENCHMARK(BareSpinLock);

void Semaphore(benchmark::State& state)
{
    nxSemaphore semaphore(0);
    for (auto _ : state)
    {
        (void)semaphore.Post();
        (void)semaphore.Wait();
    }
}
BENCHMARK(Semaphore);

void BareSemaphore(benchmark::State& state)
{
    sem_t semaphore;
    sem_init(&semaphore, 0, 0);
    for (auto _ : state)
    {
        sem_post(&semaphore);
        sem_wait(&semaphore);
    }
    sem_destroy(&semaphore);
}
BENCHMARK(BareSemaphore);
} // namespace
