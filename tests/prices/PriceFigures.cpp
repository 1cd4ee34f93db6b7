// F18: every ladder tick by tick, and decimals, against exact whole numbers. nxcore_price_figures
// ladders|decimals [full]

#include "core/prices/nxDecimalPriceConverter.h"
#include "tests/concurrency/RunTogether.h"
#include "tests/faults/Faults.h"
#include "tests/prices/ExactLadder.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <iterator>
#include <random>

namespace
{
std::atomic<unsigned long long> tried, wrong;
thread_local char const* subject = "decimals";

/// Counts what is wrong, and shows the first few.
void Expect(bool isRight, nxDecimal const& price, char const* what, nxDecimal const& other)
{
    constexpr unsigned long long mostShown = 10;
    if (!isRight && ++wrong <= mostShown)
        std::printf("wrong: %s: %s %s %s\n", subject, price.GetAsString('.').c_str(), what,
                    other.GetAsString('.').c_str());
}

/// Walks one ladder, whose prices are known beforehand.
struct LadderWalk : ExactLadder
{
    explicit LadderWalk(char const* name) : ExactLadder(name)
    {
        subject = name;
        // The finest tick is no concern of the table's when it checks prices.
        (void)_converter.SetMinimumTickIncrement(table.GetMinimumTickIncrement());
        (void)_converter.SetPriceManipulator(nxPriceManipulator(&table));
    }

    /// @param ticks  how many from zero, below and above each top, at most.
    void Walk(long long ticks)
    {
        for (std::size_t range = 0; range < ranges.size(); ++range)
        {
            Wide const reach = ticks * ranges[range].tick;
            Wide const first = range == 0 ? 0 : ranges[range - 1].top;
            Wide const last = range + 1 == ranges.size() ? first + reach : ranges[range].top;
            bool const isShort = last - first <= 2 * reach;
            WalkFrom(first, isShort ? last : first + reach);
            if (!isShort)
                WalkFrom(last - reach, last);
        }
    }

    /// All prices from `price` to `last`, some beyond, and their mirror below zero.
    void WalkFrom(Wide price, Wide last)
    {
        constexpr int beyond = 3;
        constexpr int stride = 1000;
        last += beyond * ranges[FindRange(last)].tick;
        price = Exact(PriceAt(price));
        for (int i = 0; price < last; ++i, ++tried)
        {
            nxDecimal const next = Step(price, true);
            CheckRounding(PriceAt(price));
            // Beyond this many ticks the quotient, a double, no longer tells a third.
            if (price / ranges[FindRange(price)].tick <= PowerOfTen(6) && price <= PowerOfTen(17))
                CheckRounding(MakeDecimal(price + (Exact(next) - price) / 3, finest));
            for (int const sign : {1, -1})
            {
                nxDecimal const start = PriceAt(sign * price);
                CheckSteps(start, 1);
                CheckSteps(start, -1);
                if (i % stride == 0)
                    CheckSteps(start, sign * stride);
                if (i % 2 == (sign > 0 ? 0 : 1))
                    CheckText(start);
            }
            Expect(!IsEven() || Exact(Step(Exact(next), false)) == price, next, "does not lead back to",
                   PriceAt(price));
            price = Exact(next);
        }
    }

    void CheckSteps(nxDecimal const& start, int ticks)
    {
        nxDecimal price = start, expected = start;
        for (int i = 0; i < std::abs(ticks); ++i)
            expected = Step(Exact(expected), ticks > 0);
        table.Increment(price, ticks);
        Expect(IsSame(price, expected), start, "steps to", price);
    }

    void CheckRounding(nxDecimal const& price)
    {
        for (nxEnumValue const method : {NX_ROUNDING_METHOD_DOWN, NX_ROUNDING_METHOD_UP,
                                         NX_ROUNDING_METHOD_NEAREST, NX_ROUNDING_METHOD_MODIFIED_NEAREST})
        {
            nxDecimal rounded = price;
            table.RoundToValidTick(nxRoundingMethodEnum(method), rounded);
            Expect(IsSame(rounded, Round(Exact(price), method)), price, "rounds to", rounded);
        }
    }

    /// Converters look a price up at four places, so that a finer one may be shown at those of another range.
    void CheckText(nxDecimal const& price)
    {
        constexpr unsigned char lookupPlaces = 4;
        if (price.GetDecimalPlaces() > lookupPlaces || Round(Exact(price), NX_ROUNDING_METHOD_DOWN) != price)
            return;
        bool done = _converter.SetPrice(price.GetAsDouble(), true);
        std::string const text = _converter.GetPriceAsString();
        done = done && _converter.SetPriceFromString(text) && _converter.GetPrice() == price.GetAsDouble() &&
               _converter.GetPriceAsString() == text && nxDecimal(text, '.') == price;
        Expect(done, price, "is shown as", nxDecimal(text, '.'));
    }

    nxDecimalPriceConverter _converter;
};

/// Two random decimals, in each operation.
void CheckPair(std::mt19937_64& random)
{
    nxDecimal sides[2];
    for (nxDecimal& side : sides)
    {
        constexpr unsigned int mostPlaces = 6;
        auto const places = static_cast<unsigned char>(random() % (mostPlaces + 1));
        // Up to 250 million, where six places are far from the grain of a double.
        auto const most = static_cast<long long>(250'000'000 * PowerOfTen(places)) >> random() % 40;
        auto const value = std::uniform_int_distribution<long long>(-most, most)(random);
        side = nxDecimal::ConstructFromValueAndDecimalPlaces(value, places);
    }
    auto const& [a, b] = sides;
    Expect(IsSame(nxDecimal(a.GetAsString('.'), '.'), a), a, "shown and read, not", b);
    Wide const left = Exact(a), right = Exact(b);
    Expect(Exact(a + b) == left + right, a, "plus", b);
    Expect(Exact(a - b) == left - right, a, "minus", b);
    Expect((a < b) == (left < right), a, "below", b);
    Expect((a == b) == (left == right), a, "equal to", b);
    // Half a unit of the last place, and a hundredth of that for the double that carries the number.
    constexpr Wide grain = 100, one = PowerOfTen(finest);
    Wide const most =
        (grain + 1) * PowerOfTen(finest - 0u - std::max(a.GetDecimalPlaces(), b.GetDecimalPlaces()));
    if (Magnitude(left) * Magnitude(right) < PowerOfTen(6) * one * one)
        Expect(2 * grain * Magnitude(Exact(a * b) * one - left * right) <= most * one, a, "times", b);
    if (right != 0 && Magnitude(left) < PowerOfTen(6) * Magnitude(right))
        Expect(2 * grain * Magnitude(Exact(a / b) * right - left * one) <= most * Magnitude(right), a, "by",
               b);
}

void CheckPairs(std::size_t seed)
{
    std::mt19937_64 random(seed); // the same in every run
    for (int i = 0; i < 10'000; ++i, ++tried)
        CheckPair(random);
}

void WalkLadder(std::size_t number)
{
    LadderWalk ladder(ladderNames[number]);
    auto const ranges = static_cast<long long>(ladder.ranges.size());
    ladder.Walk(isFull ? 1'000'000 / (2 * ranges) : 3); // below and above each top
}
} // namespace

int main(int argumentCount, char** arguments)
{
    bool const isOfLadders = argumentCount > 1 && std::string(arguments[1]) == "ladders";
    isFull = argumentCount > 2 && std::string(arguments[2]) == "full";
    std::size_t const count = isOfLadders ? std::size(ladderNames) : isFull ? 1000 : 5;
    auto const start = Clock::now();
    RunTogether(2,
                [&](int shard)
                {
                    for (auto i = static_cast<std::size_t>(shard); i < count; i += 2)
                        isOfLadders ? WalkLadder(i) : CheckPairs(i);
                });
    std::string const cases = std::to_string(tried);
    std::string const line =
        isOfLadders
            ? "ladders, " + std::to_string(count) + " of 150 walked up and down over " + cases + " prices"
            : "decimals, " + cases + " random pairs against whole numbers of 128 bits";
    return Report(start, wrong == 0, "F18 %s: %llu wrong", line.c_str(), wrong.load()) ? 0 : 1;
}
