// Rows of the vocabulary by number and by token, at random over all of them, beside maps of the same rows; and the
// list of all errors, beside a look-up for each number of the class's bounds.

#include "core/vocabulary/nxEnum.h"
#include "core/vocabulary/nxErrorEnum.h"
#include "core/vocabulary/nxVocabularyCatalogue.h"

#include <benchmark/benchmark.h>

#ifdef NX_BENCH_ABSL
#include <absl/container/flat_hash_map.h>
#endif

#include <limits>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace
{
using Words = std::pair<std::string, std::string>;

/// Takes a number of any class.
class AnyEnum : public nxEnum
{
public:
    AnyEnum() = default;
    explicit AnyEnum(unsigned int number)
    {
        _value = number;
    }

    std::string GetClassNameA() override
    {
        return "AnyEnum";
    }

protected:
    unsigned int _MinValue() const override
    {
        return 0;
    }
    unsigned int _MaxValue() const override
    {
        return std::numeric_limits<unsigned int>::max();
    }
};

/// All rows often enough that no processor learns the order.
constexpr std::size_t numberOfQuestions = 16384;

struct Questions
{
    std::vector<unsigned int> numbers;
    std::vector<std::string> tokens;
};

Questions const& GetQuestions()
{
    static Questions const questions = []
    {
        std::vector<nxEnumRow> rows;
        for (auto const& enumeration : nxVocabularyCatalogue::GetEnumerations())
            rows.insert(rows.end(), enumeration.rows.begin(), enumeration.rows.end());
        std::mt19937 random(1); // the same order in each run
        std::uniform_int_distribution<std::size_t> any(0, rows.size() - 1);
        Questions made;
        for (std::size_t count = 0; count < numberOfQuestions; ++count)
        {
            nxEnumRow const& row = rows[any(random)];
            made.numbers.push_back(row.number);
            made.tokens.emplace_back(row.token);
        }
        return made;
    }();
    return questions;
}

template <typename Map>
Map const& GetMapByNumber()
{
    static Map const map = []
    {
        Map made;
        for (auto const& enumeration : nxVocabularyCatalogue::GetEnumerations())
            for (nxEnumRow const& row : enumeration.rows)
                made.emplace(row.number, Words(row.token, row.text));
        return made;
    }();
    return map;
}

template <typename Map>
Map const& GetMapByToken()
{
    static Map const map = []
    {
        Map made;
        for (auto const& enumeration : nxVocabularyCatalogue::GetEnumerations())
            for (nxEnumRow const& row : enumeration.rows)
                made.emplace(row.token, row.number);
        return made;
    }();
    return map;
}

void TokenOfNumber(benchmark::State& state)
{
    auto const& numbers = GetQuestions().numbers;
    std::size_t next = 0;
    for ([[maybe_unused]] auto const& round : state)
    {
        AnyEnum const value(numbers[next++ % numberOfQuestions]);
        benchmark::DoNotOptimize(&value.GetShortDescription());
    }
}
BENCHMARK(TokenOfNumber);

template <typename Map>
void TokenOfNumberIn(benchmark::State& state)
{
    auto const& numbers = GetQuestions().numbers;
    Map const& map = GetMapByNumber<Map>();
    std::size_t next = 0;
    for ([[maybe_unused]] auto const& round : state)
    {
        auto const found = map.find(numbers[next++ % numberOfQuestions]);
        benchmark::DoNotOptimize(&found->second.first);
    }
}
BENCHMARK(TokenOfNumberIn<std::map<unsigned int, Words>>)->Name("TokenOfNumber/std::map");
#ifdef NX_BENCH_ABSL
BENCHMARK(TokenOfNumberIn<absl::flat_hash_map<unsigned int, Words>>)->Name("TokenOfNumber/flat_hash_map");
#endif

void NumberOfToken(benchmark::State& state)
{
    auto const& tokens = GetQuestions().tokens;
    AnyEnum value;
    std::size_t next = 0;
    for ([[maybe_unused]] auto const& round : state)
        benchmark::DoNotOptimize(value.SetFromString(tokens[next++ % numberOfQuestions]));
}
BENCHMARK(NumberOfToken);

template <typename Map>
void NumberOfTokenIn(benchmark::State& state)
{
    auto const& tokens = GetQuestions().tokens;
    Map const& map = GetMapByToken<Map>();
    std::size_t next = 0;
    for ([[maybe_unused]] auto const& round : state)
    {
        auto const found = map.find(tokens[next++ % numberOfQuestions]);
        benchmark::DoNotOptimize(found->second);
    }
}
BENCHMARK(NumberOfTokenIn<std::map<std::string, unsigned int>>)->Name("NumberOfToken/std::map");
#ifdef NX_BENCH_ABSL
BENCHMARK(NumberOfTokenIn<absl::flat_hash_map<std::string, unsigned int>>)
    ->Name("NumberOfToken/flat_hash_map");
#endif

void ListErrors(benchmark::State& state)
{
    nxErrorEnum const error;
    std::vector<nxEnumValue> values;
    for ([[maybe_unused]] auto const& round : state)
    {
        error.GetRegisteredEnumValuesForInstance(values);
        benchmark::DoNotOptimize(values.data());
    }
}
BENCHMARK(ListErrors)->Unit(benchmark::kMicrosecond);

void ListErrorsByLookUp(benchmark::State& state)
{
    auto const& map = GetMapByNumber<std::map<unsigned int, Words>>();
    constexpr unsigned int lowerBound = 1000000;
    constexpr unsigned int upperBound = 1999999;
    std::vector<nxEnumValue> values;
    for ([[maybe_unused]] auto const& round : state)
    {
        values.clear();
        for (unsigned int number = lowerBound; number <= upperBound; ++number)
            if (map.contains(number))
                values.push_back(nxEnumValue(number));
        benchmark::DoNotOptimize(values.data());
    }
}
BENCHMARK(ListErrorsByLookUp)->Unit(benchmark::kMicrosecond);
} // namespace
