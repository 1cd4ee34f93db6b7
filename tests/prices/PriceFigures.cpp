// F18: every ladder tick by tick, and decimals, against exact whole numbers. nxcore_price_figures ladders|decimals [full]

#include "core/prices/nxDecimalPriceConverter.h"
#include "core/prices/nxVariableTickTableContainer.h"
#include "tests/faults/Faults.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <iterator>
#include <random>
#include <thread>

namespace
{
__extension__ typedef __int128 Wide;

constexpr unsigned int shards = 2;

constexpr char const* ladderNames[] = {
#define NX_LADDER_BEGIN(name) #name,
#define NX_RANGE(top, increment)
#define NX_TOP(increment)
#define NX_LADDER_END(name)
#include "core/prices/tables/ladders.def"
};

constexpr nxEnumValue methods[] = {NX_ROUNDING_METHOD_DOWN, NX_ROUNDING_METHOD_UP, NX_ROUNDING_METHOD_NEAREST,
                                   NX_ROUNDING_METHOD_MODIFIED_NEAREST};

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

constexpr Wide PowerOfTen(unsigned int places)
{
    return places == 0 ? 1 : 10 * PowerOfTen(places - 1);
}

Wide Magnitude(Wide value)
{
    return value < 0 ? -value : value;
}

/// The number in units of 10^-places, which it must be a whole number of.
Wide Exact(nxDecimal const& number, unsigned int places)
{
    return number.GetValue() * PowerOfTen(places - number.GetDecimalPlaces());
}

nxDecimal MakeDecimal(Wide exact, unsigned char places)
{
    return nxDecimal::ConstructFromValueAndDecimalPlaces(static_cast<long long>(exact), places);
}

constexpr unsigned char ladderPlaces = 10; // at which every number of the catalogue is whole

/// Walks one ladder. The ladder of prices is known beforehand: from a price to the next by the tick of its range.
class LadderWalk
{
public:
    LadderWalk(std::string const& name, Tally& tally)
        : _name(name), _table(*nxVariableTickTableContainer::GetVariableTickTable("VTT_" + name)),
          _ranges(_table.GetRangeData()), _tally(tally)
    {
        // The finest tick is no concern of the table's when it checks prices.
        (void)_converter.SetMinimumTickIncrement(_table.GetMinimumTickIncrement());
        (void)_converter.SetPriceManipulator(nxPriceManipulator(&_table));
    }

    /// Only if each top is a price of its range, and one tick more is one of the next, is there one ladder of prices.
    bool IsEven() const
    {
        for (std::size_t range = 0; range + 1 < _ranges.size(); ++range)
            if (Top(range) % Tick(range) != 0 || (Top(range) + Tick(range)) % Tick(range + 1) != 0)
                return false;
        return true;
    }

    /// @param ticks  how many from zero, below and above each top, at most.
    void Walk(long long ticks)
    {
        for (std::size_t range = 0; range < _ranges.size(); ++range)
        {
            Wide const reach = ticks * Tick(range);
            Wide const first = range == 0 ? 0 : Top(range - 1);
            Wide const last = range + 1 == _ranges.size() ? first + reach : Top(range);
            bool const isShort = last - first <= 2 * reach;
            WalkFrom(first, isShort ? last : first + reach);
            if (!isShort)
                WalkFrom(last - reach, last);
        }
    }

    std::size_t GetRangeCount() const
    {
        return _ranges.size();
    }

private:
    Wide Top(std::size_t range) const
    {
        return Exact(_ranges[range].first, ladderPlaces);
    }

    Wide Tick(std::size_t range) const
    {
        return Exact(_ranges[range].second, ladderPlaces);
    }

    std::size_t FindRange(Wide price) const
    {
        std::size_t range = 0;
        while (range + 1 < _ranges.size() && price > Top(range))
            ++range;
        return range;
    }

    Wide Next(Wide price) const
    {
        return price + Tick(FindRange(price));
    }

    nxDecimal PriceOf(Wide exact, int sign) const
    {
        unsigned char const places = _ranges[FindRange(exact)].second.GetDecimalPlaces();
        return MakeDecimal(sign * exact / PowerOfTen(ladderPlaces - places), places);
    }

    /// All prices from `price` to `last`, some beyond, and their mirror below zero.
    void WalkFrom(Wide price, Wide last)
    {
        std::vector<Wide> rungs;
        for (constexpr int beyond = 3; price <= last + beyond * Tick(FindRange(last)); price = Next(price))
            rungs.push_back(price);
        for (std::size_t i = 0; i + 1 < rungs.size(); ++i)
        {
            CheckStep(rungs[i], rungs[i + 1], 1, 1);
            CheckStep(rungs[i], rungs[i + 1], -1, 1);
            CheckRounding(rungs[i], rungs[i + 1]);
            CheckText(PriceOf(rungs[i], i % 2 == 0 ? 1 : -1));
        }
        constexpr std::size_t stride = 1000;
        for (std::size_t i = 0; i + 1 < rungs.size(); i += stride)
        {
            std::size_t const end = std::min(i + stride, rungs.size() - 1);
            CheckStep(rungs[i], rungs[end], 1, static_cast<int>(end - i));
            CheckStep(rungs[i], rungs[end], -1, static_cast<int>(end - i));
        }
        _tally.tried += rungs.size();
    }

    void CheckStep(Wide from, Wide to, int sign, int ticks)
    {
        nxDecimal const start = PriceOf(from, sign);
        nxDecimal const end = PriceOf(to, sign);
        nxDecimal price = start;
        _table.Increment(price, sign * ticks);
        ExpectSame(price, end, "away from zero");
        _table.Increment(price, -sign * ticks);
        ExpectSame(price, start, "toward zero");
        if (ticks != 1)
            return;
        sign > 0 ? _table.Increment(price) : _table.Decrement(price);
        ExpectSame(price, end, "by one away from zero");
        sign > 0 ? _table.Decrement(price) : _table.Increment(price);
        ExpectSame(price, start, "by one toward zero");
    }

    /// A price of the ladder stays; one a third of a tick above it goes to it or to the next one.
    void CheckRounding(Wide low, Wide high)
    {
        Wide const between = low + (high - low) / 3;
        for (nxEnumValue const method : methods)
        {
            nxDecimal rounded = PriceOf(low, 1);
            _table.RoundToValidTick(nxRoundingMethodEnum(method), rounded);
            ExpectSame(rounded, PriceOf(low, 1), "rounded though valid");
            // Beyond this many ticks the quotient, a double, no longer tells a third.
            if (low / Tick(FindRange(low)) > PowerOfTen(6) || between > PowerOfTen(17))
                continue;
            rounded = MakeDecimal(between, ladderPlaces);
            _table.RoundToValidTick(nxRoundingMethodEnum(method), rounded);
            Wide const expected = method == NX_ROUNDING_METHOD_UP ? high : low;
            _tally.Expect(Exact(rounded, ladderPlaces) == expected,
                          [&] { return _name + " rounds from " + PriceOf(low, 1).GetAsString('.'); });
            _table.RoundToValidTick(nxRoundingMethodEnum(method),
                                    rounded); // may take other places, no other value
            _tally.Expect(Exact(rounded, ladderPlaces) == expected,
                          [&] { return _name + " rounds twice from " + PriceOf(low, 1).GetAsString('.'); });
        }
    }

    /// Converters look a price up at four places, so that a finer one may be shown at those of another range.
    void CheckText(nxDecimal const& price)
    {
        constexpr unsigned char lookupPlaces = 4;
        if (price.GetDecimalPlaces() > lookupPlaces)
            return;
        bool done = _converter.SetPrice(price.GetAsDouble(), true);
        std::string const text = _converter.GetPriceAsString();
        done = done && _converter.SetPriceFromString(text) && _converter.GetPrice() == price.GetAsDouble() &&
               _converter.GetPriceAsString() == text && nxDecimal(text, '.') == price;
        _tally.Expect(done, [&] { return _name + " shows " + price.GetAsString('.') + " as " + text; });
    }

    void ExpectSame(nxDecimal const& price, nxDecimal const& expected, char const* what)
    {
        _tally.Expect(price.GetValue() == expected.GetValue() &&
                          price.GetDecimalPlaces() == expected.GetDecimalPlaces(),
                      [&] {
                          return _name + ' ' + what + ": " + price.GetAsString('.') + " and not " +
                                 expected.GetAsString('.');
                      });
    }

    std::string _name;
    nxVariableTickTable const& _table;
    std::vector<std::pair<nxDecimal, nxDecimal>> const& _ranges;
    nxDecimalPriceConverter _converter;
    Tally& _tally;
};

/// Two random decimals, in each operation.
class DecimalPair
{
public:
    DecimalPair(std::mt19937_64& random, Tally& tally) : _tally(tally)
    {
        for (Side* const side : {&_left, &_right})
        {
            side->places = static_cast<unsigned char>(random() % (mostPlaces + 1));
            // Up to 250 million, where six places are far from the grain of a double.
            auto const most = static_cast<long long>(250'000'000 * PowerOfTen(side->places)) >> random() % 40;
            side->value = std::uniform_int_distribution<long long>(-most, most)(random);
            side->decimal = nxDecimal(Text(*side), '.');
        }
    }

    void Check()
    {
        for (Side const* const side : {&_left, &_right})
        {
            Expect(Exact(side->decimal, mostPlaces) == ExactOf(*side), "read");
            Expect(side->decimal.GetAsString('.') == Text(*side), "shown");
        }
        unsigned char const places = std::max(_left.places, _right.places);
        Wide const unit = PowerOfTen(mostPlaces - places);
        Wide const left = ExactOf(_left);
        Wide const right = ExactOf(_right);
        Expect(Exact(_left.decimal + _right.decimal, mostPlaces) == left + right, "added");
        Expect(Exact(_left.decimal - _right.decimal, mostPlaces) == left - right, "subtracted");
        Expect((_left.decimal < _right.decimal) == (left < right), "compared");
        Expect((_left.decimal == _right.decimal) == (left == right), "compared for equality");
        // Half a unit of the last place, and a hundredth of that for the double that carries the number.
        constexpr Wide grain = 100;
        Wide const one = PowerOfTen(mostPlaces);
        if (Magnitude(left) * Magnitude(right) < PowerOfTen(6) * one * one)
        {
            Wide const product = Exact(_left.decimal * _right.decimal, mostPlaces);
            Expect(2 * grain * Magnitude(product * one - left * right) <= (grain + 1) * unit * one,
                   "multiplied");
        }
        if (right != 0 && Magnitude(left) < PowerOfTen(6) * Magnitude(right))
        {
            Wide const quotient = Exact(_left.decimal / _right.decimal, mostPlaces);
            Expect(2 * grain * Magnitude(quotient * right - left * one) <=
                       (grain + 1) * unit * Magnitude(right),
                   "divided");
        }
    }

private:
    static constexpr unsigned char mostPlaces = 6;

    struct Side
    {
        long long value = 0;
        unsigned char places = 0;
        nxDecimal decimal;
    };

    static Wide ExactOf(Side const& side)
    {
        return side.value * PowerOfTen(mostPlaces - side.places);
    }

    static std::string Text(Side const& side)
    {
        std::string digits = std::to_string(side.value < 0 ? -side.value : side.value);
        if (digits.size() <= side.places)
            digits.insert(0, side.places + 1u - digits.size(), '0');
        if (side.places != 0)
            digits.insert(digits.size() - side.places, ".");
        return (side.value < 0 ? "-" : "") + digits;
    }

    void Expect(bool isRight, char const* what)
    {
        _tally.Expect(isRight, [&] { return Text(_left) + " and " + Text(_right) + " " + what; });
    }

    Side _left;
    Side _right;
    Tally& _tally;
};

template <typename Work>
void InShards(Work work)
{
    std::vector<std::thread> threads;
    for (unsigned int shard = 0; shard < shards; ++shard)
        threads.emplace_back(work, shard);
    for (std::thread& thread : threads)
        thread.join();
}

bool LadderFigure()
{
    auto const start = Clock::now();
    Tally tally;
    std::atomic<std::size_t> even = 0;
    InShards(
        [&](unsigned int shard)
        {
            for (std::size_t i = shard; i < std::size(ladderNames); i += shards)
            {
                LadderWalk ladder(ladderNames[i], tally);
                if (!ladder.IsEven())
                    continue;
                ++even;
                auto const ranges = static_cast<long long>(ladder.GetRangeCount());
                ladder.Walk(isFull ? 1'000'000 / (2 * ranges) : 3); // below and above each top
            }
        });
    return Report(start, tally.wrong == 0,
                  "F18 ladders, %zu of %zu walked up and down over %llu prices: %llu wrong", even.load(),
                  std::size(ladderNames), tally.tried.load(), tally.wrong.load());
}

bool DecimalFigure()
{
    auto const start = Clock::now();
    unsigned int const pairs = isFull ? 10'000'000 : 50'000;
    Tally tally;
    InShards(
        [&](unsigned int shard)
        {
            std::mt19937_64 random(18 + shard); // the same decimals in every run
            for (unsigned int i = shard; i < pairs; i += shards)
                DecimalPair(random, tally).Check();
        });
    return Report(start, tally.wrong == 0,
                  "F18 decimals, %u random pairs against whole numbers of 128 bits: %llu wrong", pairs,
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
