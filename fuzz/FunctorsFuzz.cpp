// Queues of work: the one run by hand against a plain deque, the one with workers against a count of what was pushed.

#include "fuzz/FuzzInput.h"

#include "core/concurrency/nxFunctor.h"
#include "core/concurrency/nxFunctorQueue.h"
#include "core/concurrency/nxFunctorThread.h"
#include "core/concurrency/nxFunctorThreadPool.h"
#include "core/concurrency/nxManuallyDispatchedFunctorQueue.h"

#include <atomic>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

namespace
{
struct Record
{
    std::mutex mutex;
    std::vector<unsigned int> run;
    std::atomic<unsigned int> alive = 0;
};

/// Notes that it was run; one with children pushes that many more, which have none.
class Work : public nxFunctor
{
public:
    Work(Record& record, nxFunctorQueueBase& queue, unsigned int number, unsigned int children)
        : _record(record), _queue(queue), _number(number), _children(children)
    {
        ++_record.alive;
    }
    ~Work() override
    {
        --_record.alive;
    }

protected:
    void _Invoke() override
    {
        {
            std::lock_guard const guard(_record.mutex);
            _record.run.push_back(_number);
        }
        for (unsigned int child = 1; child <= _children; ++child)
            FUZZ_CHECK(_queue.Push(new Work(_record, _queue, _number * 100 + child, 0)).IsOK());
    }

private:
    Record& _record;
    nxFunctorQueueBase& _queue;
    unsigned int _number;
    unsigned int _children;
};

class ByHand
{
public:
    void Step(FuzzInput& input)
    {
        switch (input.Below(5))
        {
        case 0:
        case 1:
        {
            unsigned int const children = input.Below(4);
            FUZZ_CHECK(_queue.Push(new Work(_record, _queue, ++_pushed, children)).IsOK());
            _model.push_back({_pushed, children});
            break;
        }
        case 2:
            FUZZ_EQUAL(_queue.Dispatch().IsOK(), !_model.empty());
            RunOldest();
            break;
        case 3:
            FUZZ_CHECK(_queue.DispatchAll() == NX_ERR_NOT_FOUND);
            while (!_model.empty())
                RunOldest();
            break;
        default: Pop();
        }
        FUZZ_EQUAL(_queue.Size(), static_cast<unsigned int>(_model.size()));
        FUZZ_EQUAL(_record.alive.load(), static_cast<unsigned int>(_model.size()));
        FUZZ_CHECK(_record.run == _expected);
    }

    ~ByHand()
    {
        nxFunctor* left = nullptr;
        while (_queue.Pop(&left).IsOK())
            delete left; // the queue would not
    }

private:
    struct Item
    {
        unsigned int number;
        unsigned int children;
    };

    void RunOldest()
    {
        if (_model.empty())
            return;
        Item const item = _model.front();
        _model.pop_front();
        _expected.push_back(item.number);
        for (unsigned int child = 1; child <= item.children; ++child)
            _model.push_back({item.number * 100 + child, 0});
    }

    void Pop()
    {
        nxFunctor* popped = nullptr;
        FUZZ_EQUAL(_queue.Pop(&popped).IsOK(), !_model.empty());
        FUZZ_EQUAL(popped == nullptr, _model.empty());
        delete popped;
        if (!_model.empty())
            _model.pop_front();
    }

    nxManuallyDispatchedFunctorQueue _queue;
    Record _record;
    std::deque<Item> _model;
    std::vector<unsigned int> _expected;
    unsigned int _pushed = 0;
};

/// What waits in a queue and was not run, for its owner to delete.
class Queue : public nxFunctorQueue
{
public:
    void DeleteRest()
    {
        nxFunctor* left = nullptr;
        while (_Pop(&left).IsOK())
            delete left;
    }
};

void CheckWorkers(FuzzInput& input)
{
    Queue queue;
    Record record;
    unsigned int const workers = input.Below(5);
    unsigned int pushed = 0;
    unsigned int const before = input.Below(8);
    unsigned int const after = input.Below(32);
    bool const isStoppedAtOnce = input.Truth();
    for (; pushed < before; ++pushed)
        (void)queue.Push(new Work(record, queue, pushed, 0));
    if (workers == 1)
        queue.Create(new nxFunctorThread);
    else
        queue.Create(new nxFunctorThreadPool(workers));
    for (; pushed < before + after; ++pushed)
        (void)queue.Push(new Work(record, queue, pushed, 0));
    while (!isStoppedAtOnce && workers != 0 && queue.Size() != 0)
        sched_yield();
    FUZZ_CHECK(queue.Stop().IsOK());
    std::vector<unsigned int> run = record.run;
    FUZZ_EQUAL(run.size() + queue.Size(), std::size_t{pushed});
    FUZZ_EQUAL(record.alive.load(), queue.Size());
    if (workers > 1)
        std::sort(run.begin(), run.end()); // they end in any order, but the oldest are taken first
    for (unsigned int i = 0; i < run.size(); ++i)
        FUZZ_EQUAL(run[i], i);
    queue.DeleteRest();
    FUZZ_EQUAL(record.alive.load(), 0u);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    CheckWorkers(input);
    ByHand byHand;
    while (!input.IsEmpty())
        byHand.Step(input);
    return 0;
}
