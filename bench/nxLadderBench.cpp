// A lookup in the last range of a ladder that the lookup before also hit, by one thread and by two on the same table:
// beside a one-entry cache under a mutex, and beside one in an atomic, both of plain numbers.
#include "core/prices/nxVariableTickTableContainer.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <limits>
#include <mutex>
#include <vector>

namespace
{
// What the library would cost with nothing but its mutex: whole numbers in place of decimals.
struct Range
{
    long long top;
    long long increment;
};

std::vector<Range> const& Ranges()
{
    static std::vector<Range> const ranges = {
        {9999, 1}, {19995, 5}, {49990, 10}, {99950, 50}, {std::numeric_limits<long long>::max(), 100}};
    return ranges;
}

bool Holds(std::size_t index, long long price)
{
    auto const& ranges = Ranges();
    return price <= ranges[index].top && (index == 0 || ranges[index - 1].top < price);
}

std::size_t Search(long long price)
{
    std::size_t index = 0;
    while (Ranges()[index].top < price)
        ++index;
    return index;
}

class MutexCache
{
public:
    long long Find(long long price)
    {
        std::lock_guard const guard(_mutex);
        if (!Holds(_index, price))
            _index = Search(price);
        return Ranges()[_index].increment;
    }

private:
    std::mutex _mutex;
    std::size_t _index = 0;
};

class AtomicCache
{
public:
    long long Find(long long price)
    {
        std::size_t index = _index.load(std::memory_order_acquire);
        if (!Holds(index, price))
        {
            index = Search(price);
            _index.store(index, std::memory_order_release);
        }
        return Ranges()[index].increment;
    }

private:
    std::atomic<std::size_t> _index = 0;
};

template <class Cache>
void FindIn(benchmark::State& state)
{
    static Cache cache;
    long long price = 123400;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(price);
        benchmark::DoNotOptimize(cache.Find(price));
    }
}

void FindInLibrary(benchmark::State& state, char const* text)
{
    nxVariableTickTable const& table = *nxVariableTickTableContainer::GetVariableTickTable("VTT_CXE_mifid_5");
    nxDecimal price(text, '.');
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(price);
        benchmark::DoNotOptimize(&table.GetTickIncrement(price));
    }
}
} // namespace

BENCHMARK(FindIn<MutexCache>)->Name("MutexAndCache")->ThreadRange(1, 2)->UseRealTime();
BENCHMARK(FindIn<AtomicCache>)->Name("AtomicCache")->ThreadRange(1, 2)->UseRealTime();
BENCHMARK_CAPTURE(FindInLibrary, whole, "51000")->Name("Library/SameScale")->ThreadRange(1, 2)->UseRealTime();
BENCHMARK_CAPTURE(FindInLibrary, cents, "51000.00")
    ->Name("Library/OtherScale")
    ->ThreadRange(1, 2)
    ->UseRealTime();
