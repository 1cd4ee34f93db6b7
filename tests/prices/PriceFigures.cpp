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
constexpr unsigned int shards = 2;

/// The cases that were tried and what was wrong with them, the first few of it in words.
struct Tally
{
    std::atomic<unsigned long long> tried = 0;
    std::atomic<unsigned long long> wrong = 0;

    template <typename Describe>
    void Expect(bool isRight, Describe describe)
    {
        constexpr unsigned long long mostWords = 10;
        if (!isRight && ++wrong <= mostWords)
            std::printf("wrong: %s\n", describe().c_str());
    }
};

bool IsSame(nxDecimal const& a, nxDecimal const& b)
{
    return a.GetValue() == b.GetValue() && a.GetDecimalPlaces() == b.GetDecimalPlaces();
}

/// Walks one ladder, whose prices are known beforehand.
class LadderWalk : public ExactLadder
{
public:
    LadderWalk(std::string const& name, Tally& tally) : ExactLadder(name), _name(name), _tally(tally)
    {
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

private:
    /// All prices from `price` to `last`, some beyond, and their mirror below zero.
    void WalkFrom(Wide price, Wide last)
    {
        constexpr int beyond = 3;
        constexpr int stride = 1000;
        last += beyond * ranges[FindRange(last)].tick;
        price = Exact(PriceAt(price));
        for (int i = 0; price < last; ++i, ++_tally.tried)
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
            Expect(!IsEven() || Exact(Step(Exact(next), false)) == price, next, "does not lead back");
            price = Exact(next);
        }
    }

    void CheckSteps(nxDecimal const& start, int ticks)
    {
        nxDecimal price = start, expected = start;
        for (int i = 0; i < std::abs(ticks); ++i)
            expected = Step(Exact(expected), ticks > 0);
        table.Increment(price, ticks);
        Expect(IsSame(price, expected), start, "steps to " + price.GetAsString('.'));
        if (std::abs(ticks) == 1)
        {
            price = start;
            ticks > 0 ? table.Increment(price) : table.Decrement(price);
            Expect(IsSame(price, expected), start, "steps by one to " + price.GetAsString('.'));
        }
    }

    void CheckRounding(nxDecimal const& price)
    {
        for (nxEnumValue const method : {NX_ROUNDING_METHOD_DOWN, NX_ROUNDING_METHOD_UP,
                                         NX_ROUNDING_METHOD_NEAREST, NX_ROUNDING_METHOD_MODIFIED_NEAREST})
        {
            nxDecimal rounded = price;
            table.RoundToValidTick(nxRoundingMethodEnum(method), rounded);
            Expect(IsSame(rounded, Round(Exact(price), method)), price,
                   "rounds to " + rounded.GetAsString('.'));
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
        Expect(done, price, "is shown as " + text);
    }

    void Expect(bool isRight, nxDecimal const& price, std::string const& what)
    {
        _tally.Expect(isRight, [&] { return _name + ": " + price.GetAsString('.') + ' ' + what; });
    }

    std::string _name;
    nxDecimalPriceConverter _converter;
    Tally& _tally;
};

/// Two random decimals, in each operation.
void CheckPair(std::mt19937_64& random, Tally& tally)
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
    nxDecimal const& a = sides[0];
    nxDecimal const& b = sides[1];
    auto const expect = [&](bool isRight, char const* what) {
        tally.Expect(isRight, [&] { return a.GetAsString('.') + " and " + b.GetAsString('.') + " " + what; });
    };
    expect(IsSame(nxDecimal(a.GetAsString('.'), '.'), a), "shown and read");
    Wide const left = Exact(a), right = Exact(b);
    expect(Exact(a + b) == left + right, "added");
    expect(Exact(a - b) == left - right, "subtracted");
    expect((a < b) == (left < right), "compared");
    expect((a == b) == (left == right), "compared for equality");
    // Half a unit of the last place, and a hundredth of that for the double that carries the number.
    constexpr Wide grain = 100, one = PowerOfTen(finest);
    Wide const unit = PowerOfTen(finest - 0u - std::max(a.GetDecimalPlaces(), b.GetDecimalPlaces()));
    if (Magnitude(left) * Magnitude(right) < PowerOfTen(6) * one * one)
        expect(2 * grain * Magnitude(Exact(a * b) * one - left * right) <= (grain + 1) * unit * one,
               "multiplied");
    if (right != 0 && Magnitude(left) < PowerOfTen(6) * Magnitude(right))
        expect(2 * grain * Magnitude(Exact(a / b) * right - left * one) <=
                   (grain + 1) * unit * Magnitude(right),
               "divided");
}

bool LadderFigure()
{
    auto const start = Clock::now();
    Tally tally;
    RunTogether(shards,
                [&](int shard)
                {
                    for (auto i = static_cast<std::size_t>(shard); i < std::size(ladderNames); i += shards)
                    {
                        LadderWalk ladder(ladderNames[i], tally);
                        auto const ranges = static_cast<long long>(ladder.ranges.size());
                        ladder.Walk(isFull ? 1'000'000 / (2 * ranges) : 3); // below and above each top
                    }
                });
    return Report(start, tally.wrong == 0,
                  "F18 ladders, %zu of %zu walked up and down over %llu prices: %llu wrong",
                  std::size(ladderNames), std::size(ladderNames), tally.tried.load(), tally.wrong.load());
}

bool DecimalFigure()
{
    auto const start = Clock::now();
    int const pairs = isFull ? 10'000'000 : 50'000;
    Tally tally;
    RunTogether(shards,
                [&](int shard)
                {
                    std::mt19937_64 random(18u + static_cast<unsigned int>(shard)); // the same in every run
                    for (int i = shard; i < pairs; i += static_cast<int>(shards))
                        CheckPair(random, tally);
                });
    return Report(start, tally.wrong == 0,
                  "F18 decimals, %d random pairs against whole numbers of 128 bits: %llu wrong", pairs,
                  tally.wrong.load());
}
} // namespace

int main(int argumentCount, char** arguments)
{
    std::string const figure = argumentCount > 1 ? arguments[1] : "";
    isFull = argumentCount > 2 && std::string(arguments[2]) == "full";
    if (figure == "ladders")
        return LadderFigure() ? 0 : 1;
    return figure == "decimals" && DecimalFigure() ? 0 : 1;
}
