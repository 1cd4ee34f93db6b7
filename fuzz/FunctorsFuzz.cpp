// Queues of work: the one run by hand against a plain deque, the one with workers against a count of pushes.

#include "fuzz/FuzzInput.h"

#include "core/concurrency/nxFunctor.h"
#include "core/concurrency/nxFunctorQueue.h"
#include "core/concurrency/nxFunctorThread.h"
#include "core/concurrency/nxFunctorThreadPool.h"
#include "core/concurrency/nxManuallyDispatchedFunctorQueue.h"

namespace
{
struct Record
{
    std::mutex mutex;
    std::vector<unsigned int> run;
    std::shared_ptr<bool> alive = std::make_shared<bool>(true); // held by all work that there is, too
};

struct Work : public nxFunctor
{
    explicit Work(std::function<void()> aWork) : work(std::move(aWork))
    {
    }

    void _Invoke() override
    {
        work();
    }

    std::function<void()> work;
};

/// Has work wait that notes that it was run; one with children pushes that many more, which have none.
void Push(Record& record, nxFunctorQueueBase& queue, unsigned int number, unsigned int children)
{
    auto const work = [&record, &queue, number, children, alive = record.alive]
    {
        std::unique_lock guard(record.mutex);
        record.run.push_back(number);
        guard.unlock();
        for (unsigned int child = 1; child <= children; ++child)
            Push(record, queue, number * 100 + child, 0);
    };
    FUZZ_CHECK(queue.Push(new Work(work)).IsOK());
}

void CheckByHand(FuzzInput& input)
{
    nxManuallyDispatchedFunctorQueue queue;
    Record record;
    std::deque<std::pair<unsigned int, unsigned int>> waiting; // number and children
    std::vector<unsigned int> expected;
    auto const runOldest = [&]
    {
        auto const [number, children] = waiting.front();
        waiting.pop_front();
        expected.push_back(number);
        for (unsigned int child = 1; child <= children; ++child)
            waiting.emplace_back(number * 100 + child, 0);
    };
    nxFunctor* popped = nullptr;
    for (unsigned int number = 1; input.HasStep(); ++number)
    {
        unsigned int const action = input.Below(8);
        bool const hasOne = !waiting.empty();
        if (action < 4) // with so many children
            Push(record, queue, number, action), waiting.emplace_back(number, action);
        else if (action == 4)
            for (FUZZ_CHECK(queue.DispatchAll() == NX_ERR_NOT_FOUND); !waiting.empty();)
                runOldest();
        else if (action == 5)
        {
            Work none([] {});
            popped = &none; // becomes null where nothing waits
            FUZZ_CHECK(queue.Pop(&popped).IsOK() == hasOne && (popped != nullptr) == hasOne);
            delete std::exchange(popped, nullptr);
            hasOne ? waiting.pop_front() : void();
        }
        else
            FUZZ_EQUAL(queue.Dispatch().IsOK(), hasOne), hasOne ? runOldest() : void();
        FUZZ_CHECK(queue.Size() == waiting.size() &&
                   std::cmp_equal(record.alive.use_count(), 1 + waiting.size()));
        FUZZ_CHECK(record.run == expected);
    }
    while (queue.Pop(&popped).IsOK())
        delete popped; // the queue would not
}

/// What waits in a queue and was not run, for its owner to delete.
struct Queue : public nxFunctorQueue
{
    using nxFunctorQueue::_Pop;
};

void CheckWorkers(FuzzInput& input, unsigned int workers)
{
    Queue queue;
    Record record;
    unsigned int const before = input.Below(8);
    unsigned int const after = input.Below(32);
    bool const isStoppedAtOnce = input.Truth();
    for (unsigned int number = 0; number <= before + after; ++number)
    {
        if (number == before && workers == 1)
            queue.Create(new nxFunctorThread);
        else if (number == before)
            queue.Create(new nxFunctorThreadPool(workers));
        if (number != before + after)
            Push(record, queue, number, 0);
    }
    while (!isStoppedAtOnce && workers != 0 && queue.Size() != 0)
        sched_yield();
    FUZZ_CHECK(queue.Stop().IsOK());
    FUZZ_EQUAL(record.run.size() + queue.Size(), std::size_t{before} + after);
    FUZZ_EQUAL(record.alive.use_count(), 1L + queue.Size());
    if (workers > 1) // they end in any order, but the oldest are taken first
        std::sort(record.run.begin(), record.run.end());
    for (unsigned int i = 0; i < record.run.size(); ++i)
        FUZZ_EQUAL(record.run[i], i);
    for (nxFunctor* left = nullptr; queue._Pop(&left).IsOK();)
        delete left;
    FUZZ_EQUAL(record.alive.use_count(), 1L);
}
} // namespace

void FuzzOne(FuzzInput& input)
{
    // Threads take a hundred times as long as the rest, so that few inputs have them.
    unsigned int const workers = input.Take<std::uint8_t>();
    if (workers >= 250)
        CheckWorkers(input, workers - 250);
    CheckByHand(input);
}
