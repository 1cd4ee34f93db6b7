// The ladders of the catalogue against exact integers: steps along them, rounding to them, and fixed ticks of
// any size.

#include "fuzz/FuzzInput.h"

#include "core/prices/nxPriceManipulator.h"
#include "tests/prices/ExactLadder.h"

namespace
{
void CheckSteps(ExactLadder const& ladder, Wide price, bool up, int ticks)
{
    nxDecimal const start = ladder.PriceAt(price);
    nxDecimal moved = start;
    up ? ladder.table.Increment(moved) : ladder.table.Decrement(moved);
    FUZZ_CHECK(IsSame(moved, ladder.Step(Exact(start), up)));
    if (!ladder.IsEven())
        return;
    // From the price of the ladder that is the nearest toward zero, steps lead back.
    nxDecimal const first = ladder.Round(price, price < 0 ? NX_ROUNDING_METHOD_UP : NX_ROUNDING_METHOD_DOWN);
    moved = first;
    ladder.table.Increment(moved, ticks);
    FUZZ_EQUAL(nxPriceManipulator(&ladder.table).GetPriceDifferenceInTicks(first, moved).GetValue(),
               static_cast<unsigned int>(std::abs(ticks)));
    ladder.table.Increment(moved, -ticks);
    FUZZ_EQUAL(Exact(moved), Exact(first));
}

void CheckRound(ExactLadder const& ladder, nxDecimal const& price, nxEnumValue method)
{
    nxDecimal rounded = price;
    ladder.table.RoundToValidTick(nxRoundingMethodEnum(method), rounded);
    Wide const before = Exact(price);
    ExactLadder::Range const& range = ladder.ranges[ladder.FindRoundingRange(before)];
    if (Magnitude(before) / range.tick * PowerOfTen(std::max(price.GetDecimalPlaces(), range.places)) >
        PowerOfTen(15))
        return; // the quotient is a double
    if (range.tick >= 2 * PowerOfTen(finest))
        FUZZ_CHECK(Exact(rounded) % range.tick == 0); // a nearly whole quotient counts as whole
    else
        FUZZ_CHECK(IsSame(rounded, ladder.Round(before, method)));
}

/// A tick of any size, or none: a count of ticks is one product, so none is too many.
void CheckFixedTick(FuzzInput& input)
{
    nxPriceManipulator const manipulator(FuzzDecimal<nxDecimal, long long>(input));
    auto price = FuzzDecimal<nxDecimal, long long>(input);
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
    ExactLadder const ladder(ladderNames[input.Below(std::size(ladderNames))]);
    // Up to a million, finely; near one of the tops, or anywhere.
    Wide price = input.Take<long long>();
    if (input.Truth())
    {
        auto const& [top, tick, places] = ladder.ranges[input.Below(ladder.ranges.size())];
        price = price % (5 * tick) + top;
    }
    price %= PowerOfTen(6 + finest);

    auto const places = static_cast<unsigned char>(input.Below(7));
    auto const method = static_cast<nxEnumValue>(NX_ROUNDING_METHOD_DOWN + input.Below(4));
    CheckRound(ladder, MakeDecimal(price, places), method);
    bool const up = input.Truth();
    int const ticks = input.Take<short>() % 50; // climbed one by one, three times
    CheckSteps(ladder, price, up, ticks);
    CheckFixedTick(input);
}
