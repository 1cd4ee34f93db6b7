// The ladders of the catalogue against exact integers: steps along them, rounding to them, and fixed ticks of any size.

#include "fuzz/FuzzInput.h"

#include "core/prices/nxPriceManipulator.h"
#include "core/prices/nxVariableTickTableContainer.h"

namespace
{
__extension__ typedef __int128 Wide;

constexpr char const* names[] = {
#define NX_LADDER_BEGIN(name) #name,
#define NX_RANGE(top, increment)
#define NX_TOP(increment)
#define NX_LADDER_END(name)
#include "core/prices/tables/ladders.def"
};

constexpr unsigned int finest = 10; // places at which every number of the catalogue is whole

Wide PowerOfTen(unsigned int places)
{
    Wide power = 1;
    for (; places != 0; --places)
        power *= 10;
    return power;
}

Wide Exact(nxDecimal const& number)
{
    return number.GetValue() * PowerOfTen(finest - number.GetDecimalPlaces());
}

Wide Magnitude(Wide value)
{
    return value < 0 ? -value : value;
}

/// A ladder in whole numbers of 10^-10.
class Ladder
{
public:
    explicit Ladder(char const* name)
        : _table(*nxVariableTickTableContainer::GetVariableTickTable(std::string("VTT_") + name)),
          _ranges(_table.GetRangeData())
    {
    }

    nxVariableTickTable const& GetTable() const
    {
        return _table;
    }

    Wide Top(std::size_t range) const
    {
        return Exact(_ranges[range].first);
    }

    Wide Tick(std::size_t range) const
    {
        return Exact(_ranges[range].second);
    }

    unsigned char Places(std::size_t range) const
    {
        return _ranges[range].second.GetDecimalPlaces();
    }

    std::size_t GetRangeCount() const
    {
        return _ranges.size();
    }

    std::size_t FindRange(Wide price) const
    {
        std::size_t range = 0;
        while (range + 1 < _ranges.size() && Magnitude(price) > Top(range))
            ++range;
        return range;
    }

    /// Whether every top is a price of its own range and of the one above: only then is there one ladder of prices.
    bool IsEven() const
    {
        for (std::size_t range = 0; range + 1 < _ranges.size(); ++range)
            if (Top(range) % Tick(range) != 0 || Top(range) % Tick(range + 1) != 0)
                return false;
        return true;
    }

private:
    nxVariableTickTable const& _table;
    std::vector<std::pair<nxDecimal, nxDecimal>> const& _ranges;
};

nxDecimal MakeDecimal(Wide exact, unsigned char places)
{
    auto const value = static_cast<long long>(exact / PowerOfTen(finest - places));
    return nxDecimal::ConstructFromValueAndDecimalPlaces(value, places);
}

void CheckStep(Ladder const& ladder, Wide price, bool up)
{
    std::size_t const range = ladder.FindRange(price);
    bool const towardZero = price != 0 && up == (price < 0);
    bool const intoLower =
        towardZero && range != 0 && Magnitude(price) - ladder.Tick(range) <= ladder.Top(range - 1);
    Wide const tick = ladder.Tick(intoLower ? range - 1 : range);
    Wide const expected = up ? price + tick : price - tick;

    nxDecimal moved = MakeDecimal(price, ladder.Places(range));
    up ? ladder.GetTable().Increment(moved) : ladder.GetTable().Decrement(moved);
    FUZZ_CHECK(Exact(moved) == expected);
    FUZZ_EQUAL(moved.GetDecimalPlaces(), ladder.Places(ladder.FindRange(expected)));
    up ? ladder.GetTable().Decrement(moved) : ladder.GetTable().Increment(moved);
    FUZZ_CHECK(Exact(moved) == price);
}

void CheckWalk(Ladder const& ladder, Wide price, int ticks)
{
    nxDecimal const start = MakeDecimal(price, ladder.Places(ladder.FindRange(price)));
    nxDecimal walked = start;
    ladder.GetTable().Increment(walked, ticks);
    nxPriceManipulator const manipulator(&ladder.GetTable());
    FUZZ_EQUAL(manipulator.GetPriceDifferenceInTicks(start, walked).GetValue(),
               static_cast<unsigned int>(std::abs(ticks)));
    ladder.GetTable().Increment(walked, -ticks);
    FUZZ_CHECK(Exact(walked) == price);
}

void CheckRound(Ladder const& ladder, Wide exact, unsigned char places, nxEnumValue method)
{
    nxDecimal const price = MakeDecimal(exact, places);
    Wide const before = Exact(price);
    std::size_t range = ladder.FindRange(before);
    if (range != 0 && Magnitude(before) < ladder.Top(range - 1) + ladder.Tick(range - 1))
        --range; // off the ladder, between a top and one tick above it
    Wide const tick = ladder.Tick(range);
    nxDecimal rounded = price;
    ladder.GetTable().RoundToValidTick(nxRoundingMethodEnum(method), rounded);
    Wide const after = Exact(rounded);
    unsigned char const mostPlaces = std::max(places, ladder.Places(range));
    if (Magnitude(before) / tick * PowerOfTen(mostPlaces) > PowerOfTen(15))
        return; // the quotient is a double
    FUZZ_CHECK(after % tick == 0);
    FUZZ_EQUAL(rounded.GetDecimalPlaces(), ladder.Places(range));
    if (tick >= 2 * PowerOfTen(finest))
        return; // a quotient that is nearly whole counts as whole, as it is wanted
    Wide const below = before - ((before % tick) + tick) % tick;
    switch (method)
    {
    case NX_ROUNDING_METHOD_DOWN: FUZZ_EQUAL(after, below); break;
    case NX_ROUNDING_METHOD_UP: FUZZ_CHECK(after == (below == before ? below : below + tick)); break;
    default:
        FUZZ_CHECK(2 * Magnitude(after - before) <= tick);
        if (2 * Magnitude(after - before) == tick)
            FUZZ_EQUAL(Magnitude(after) > Magnitude(before), method == NX_ROUNDING_METHOD_NEAREST);
    }
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

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    Ladder const ladder(names[input.Below(std::size(names))]);
    // Up to a thousand million, finely; at one of the tops, or anywhere.
    Wide price = input.Take<long long>() % (PowerOfTen(9 + finest) + 1);
    if (input.Truth())
    {
        auto const range = input.Below(static_cast<unsigned int>(ladder.GetRangeCount()));
        price = price % (5 * ladder.Tick(range)) + ladder.Top(range);
    }
    price %= PowerOfTen(6 + finest);

    auto const places = static_cast<unsigned char>(input.Below(7));
    CheckRound(ladder, price, places, static_cast<nxEnumValue>(NX_ROUNDING_METHOD_DOWN + input.Below(4)));
    if (ladder.IsEven())
    {
        price -= price % ladder.Tick(ladder.FindRange(price));
        CheckStep(ladder, price, input.Truth());
        CheckWalk(ladder, price, input.Take<short>() % 200);
    }
    CheckFixedTick(input);
    return 0;
}
