// The ladders of the catalogue against exact integers: steps along them, rounding to them, and fixed ticks of any size.

#include "fuzz/FuzzInput.h"

#include "core/prices/nxPriceManipulator.h"
#include "core/prices/nxVariableTickTableContainer.h"

namespace
{
constexpr char const* names[] = {
#define NX_LADDER_BEGIN(name) "VTT_" #name,
#define NX_RANGE(top, increment)
#define NX_TOP(increment)
#define NX_LADDER_END(name)
#include "core/prices/tables/ladders.def"
};

constexpr unsigned char finest = 10; // places at which every number of the catalogue is whole

FuzzWide Exact(nxDecimal const& number)
{
    return number.GetValue() * FuzzPowerOfTen(finest - number.GetDecimalPlaces());
}

FuzzWide Magnitude(FuzzWide value)
{
    return value < 0 ? -value : value;
}

nxDecimal MakeDecimal(FuzzWide exact, unsigned char places)
{
    auto const value = static_cast<long long>(exact / FuzzPowerOfTen(finest - places));
    return nxDecimal::ConstructFromValueAndDecimalPlaces(value, places);
}

/// A ladder in whole numbers of 10^-10.
class Ladder
{
public:
    explicit Ladder(std::string const& name)
        : table(*nxVariableTickTableContainer::GetVariableTickTable(name)), _ranges(table.GetRangeData())
    {
    }

    FuzzWide Top(std::size_t range) const
    {
        return Exact(_ranges[range].first);
    }

    FuzzWide Tick(std::size_t range) const
    {
        return Exact(_ranges[range].second);
    }

    unsigned char Places(FuzzWide price) const
    {
        return _ranges[FindRange(price)].second.GetDecimalPlaces();
    }

    std::size_t GetRangeCount() const
    {
        return _ranges.size();
    }

    std::size_t FindRange(FuzzWide price) const
    {
        std::size_t range = 0;
        while (range + 1 < _ranges.size() && Magnitude(price) > Top(range))
            ++range;
        return range;
    }

    /// Only if each top is a price of its range, and one tick more is one of the next, is there one ladder of prices.
    bool IsEven() const
    {
        for (std::size_t range = 0; range + 1 < _ranges.size(); ++range)
            if (Top(range) % Tick(range) != 0 || (Top(range) + Tick(range)) % Tick(range + 1) != 0)
                return false;
        return true;
    }

    /// The price of the ladder that is the nearest toward zero, if the ladder is even.
    FuzzWide CutToPrice(FuzzWide price) const
    {
        std::size_t const range = FindRange(price);
        if (range != 0 && Magnitude(price) < Top(range - 1) + Tick(range - 1))
            return price < 0 ? -Top(range - 1) : Top(range - 1);
        return price - price % Tick(range);
    }

    nxVariableTickTable const& table;

private:
    std::vector<std::pair<nxDecimal, nxDecimal>> const& _ranges;
};

void CheckSteps(Ladder const& ladder, FuzzWide price, bool up, int ticks)
{
    std::size_t range = ladder.FindRange(price);
    bool const towardZero = price != 0 && up == (price < 0);
    if (towardZero && range != 0 && Magnitude(price) - ladder.Tick(range) <= ladder.Top(range - 1))
        --range; // down into the next range
    FuzzWide const expected = up ? price + ladder.Tick(range) : price - ladder.Tick(range);
    nxDecimal const start = MakeDecimal(price, ladder.Places(price));
    nxDecimal moved = start;
    up ? ladder.table.Increment(moved) : ladder.table.Decrement(moved);
    FUZZ_EQUAL(Exact(moved), expected);
    FUZZ_EQUAL(moved.GetDecimalPlaces(), ladder.Places(expected));
    up ? ladder.table.Decrement(moved) : ladder.table.Increment(moved);
    FUZZ_EQUAL(Exact(moved), price);

    ladder.table.Increment(moved, ticks);
    nxPriceManipulator const manipulator(&ladder.table);
    FUZZ_EQUAL(manipulator.GetPriceDifferenceInTicks(start, moved).GetValue(),
               static_cast<unsigned int>(std::abs(ticks)));
    ladder.table.Increment(moved, -ticks);
    FUZZ_EQUAL(Exact(moved), price);
}

void CheckRound(Ladder const& ladder, nxDecimal const& price, nxEnumValue method)
{
    FuzzWide const before = Exact(price);
    std::size_t range = ladder.FindRange(before);
    if (range != 0 && Magnitude(before) < ladder.Top(range - 1) + ladder.Tick(range - 1))
        --range; // off the ladder, between a top and one tick above it
    FuzzWide const tick = ladder.Tick(range);
    unsigned char const places = ladder.Places(ladder.Top(range));
    nxDecimal rounded = price;
    ladder.table.RoundToValidTick(nxRoundingMethodEnum(method), rounded);
    FuzzWide const after = Exact(rounded);
    if (Magnitude(before) / tick * FuzzPowerOfTen(std::max(price.GetDecimalPlaces(), places)) >
        FuzzPowerOfTen(15))
        return; // the quotient is a double
    FUZZ_CHECK(after % tick == 0);
    FUZZ_EQUAL(rounded.GetDecimalPlaces(), places);
    if (tick >= 2 * FuzzPowerOfTen(finest))
        return; // a quotient that is nearly whole counts as whole, as it is wanted
    FuzzWide const below = before - ((before % tick) + tick) % tick;
    FuzzWide const distance = 2 * Magnitude(after - before);
    if (method == NX_ROUNDING_METHOD_DOWN || method == NX_ROUNDING_METHOD_UP)
        FUZZ_EQUAL(after, below == before || method == NX_ROUNDING_METHOD_DOWN ? below : below + tick);
    else
        FUZZ_CHECK(distance < tick || (distance == tick && (Magnitude(after) > Magnitude(before)) ==
                                                               (method == NX_ROUNDING_METHOD_NEAREST)));
}

/// A tick of any size, or none: a count of ticks is one product, so none is too many.
void CheckFixedTick(FuzzInput& input)
{
    auto const take = [&input]
    {
        auto const value = input.Take<long long>();
        return nxDecimal::ConstructFromValueAndDecimalPlaces(value, input.Take<unsigned char>());
    };
    nxPriceManipulator const manipulator(take());
    nxDecimal price = take();
    manipulator.Increment(price, input.Take<int>());
    manipulator.Increment(price);
    manipulator.Decrement(price);
    manipulator.RoundToValidPrice(nxRoundingMethodEnum(NX_ROUNDING_METHOD_UP), price);
    FUZZ_EQUAL(manipulator.GetPriceDifferenceInTicks(price, price).GetValue(), 0u);
    FUZZ_CHECK(manipulator.GetPriceDifferenceInTicks(price, nxDecimal::GetNullDecimal()).IsNull());
}
} // namespace

void FuzzOne(FuzzInput& input)
{
    Ladder const ladder(names[input.Below(std::size(names))]);
    // Up to a million, finely; near one of the tops, or anywhere.
    FuzzWide price = input.Take<long long>();
    if (input.Truth())
    {
        auto const range = input.Below(static_cast<unsigned int>(ladder.GetRangeCount()));
        price = price % (5 * ladder.Tick(range)) + ladder.Top(range);
    }
    price %= FuzzPowerOfTen(6 + finest);

    auto const places = static_cast<unsigned char>(input.Below(7));
    auto const method = static_cast<nxEnumValue>(NX_ROUNDING_METHOD_DOWN + input.Below(4));
    CheckRound(ladder, MakeDecimal(price, places), method);
    bool const up = input.Truth();
    int const ticks = input.Take<short>() % 200;
    if (ladder.IsEven())
        CheckSteps(ladder, ladder.CutToPrice(price), up, ticks);
    CheckFixedTick(input);
}
