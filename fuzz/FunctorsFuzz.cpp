// The queue of work that is run by hand, against a plain deque.

#include "fuzz/FuzzInput.h"

#include "core/concurrency/nxFunctor.h"
#include "core/concurrency/nxManuallyDispatchedFunctorQueue.h"

#include <deque>

namespace
{
struct Record
{
    std::vector<unsigned int> run;
    unsigned int alive = 0;
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
        _record.run.push_back(_number);
        for (unsigned int child = 1; child <= _children; ++child)
            FUZZ_CHECK(_queue.Push(new Work(_record, _queue, _number * 100 + child, 0)).IsOK());
    }

private:
    Record& _record;
    nxFunctorQueueBase& _queue;
    unsigned int _number;
    unsigned int _children;
};

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
            FUZZ_CHECK(queue.Push(new Work(record, queue, number, action)).IsOK()),
                waiting.emplace_back(number, action);
        else if (action == 4)
            for (FUZZ_CHECK(queue.DispatchAll() == NX_ERR_NOT_FOUND); !waiting.empty();)
                runOldest();
        else if (action == 5)
        {
            FUZZ_CHECK(queue.Pop(&popped).IsOK() == hasOne && (popped != nullptr) == hasOne);
            delete std::exchange(popped, nullptr);
            hasOne ? waiting.pop_front() : void();
        }
        else
            FUZZ_EQUAL(queue.Dispatch().IsOK(), hasOne), hasOne ? runOldest() : void();
        FUZZ_EQUAL(queue.Size(), static_cast<unsigned int>(waiting.size()));
        FUZZ_EQUAL(record.alive, static_cast<unsigned int>(waiting.size()));
        FUZZ_CHECK(record.run == expected);
    }
    while (queue.Pop(&popped).IsOK())
        delete popped; // the queue would not
}
} // namespace

void FuzzOne(FuzzInput& input)
{
    CheckByHand(input);
}
