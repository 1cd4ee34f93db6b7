// One face for a fixed tick, a ladder and neither.
#include "core/prices/nxPriceManipulator.h"

#include "core/prices/nxVariableTickTableContainer.h"

#include <gtest/gtest.h>

#include <climits>
#include <tuple>
#include <type_traits>

static_assert(std::is_copy_constructible_v<nxPriceManipulator> && !std::is_polymorphic_v<nxPriceManipulator>);

namespace
{
nxVariableTickTable const* Euz1()
{
    return nxVariableTickTableContainer::GetVariableTickTable(
        "VTT_CHIX_EUZ1"); // 0.001 up to 9.999, then 0.005
}

nxDecimal Price(std::string const& text)
{
    return nxDecimal(text, '.');
}

std::string Step(nxPriceManipulator const& manipulator, std::string const& price, int ticks)
{
    nxDecimal value = Price(price);
    manipulator.Increment(value, ticks);
    return value.GetAsLogString('.');
}

unsigned int Difference(nxPriceManipulator const& manipulator, std::string const& a, std::string const& b)
{
    return manipulator.GetPriceDifferenceInTicks(Price(a), Price(b)).GetValue();
}
} // namespace

TEST(nxPriceManipulatorState, TellsUnsetFixedAndVariable)
{
    using Row = std::tuple<nxPriceManipulator, bool, bool, char const*, unsigned int>;
    Row const rows[] = {
        {nxPriceManipulator(), false, false, "0", 0},
        {nxPriceManipulator(Price("0.25")), true, false, "0.25", 2},
        {nxPriceManipulator(Price("-0.25")), false, false, "-0.25", 2},
        {nxPriceManipulator(nxDecimal::GetNullDecimal()), false, false, "NULL", 0},
        {nxPriceManipulator(Euz1()), true, true, "0.001", 3},
    };
    for (auto const& [manipulator, valid, variable, minimumTick, placesAt10] : rows)
    {
        EXPECT_EQ(manipulator.IsValid(), valid) << minimumTick;
        EXPECT_EQ(manipulator.IsVariableTick(), variable) << minimumTick;
        EXPECT_EQ(manipulator.GetMinimumTickIncrement().GetAsLogString('.'), minimumTick);
        EXPECT_EQ(manipulator.NumberOfDecimalPlaces(Price("10")), placesAt10) << minimumTick;
    }
}

TEST(nxPriceManipulatorState, KeepsTheFixedTickUnderATable)
{
    nxPriceManipulator manipulator(Price("0.25"));
    manipulator.Init(Euz1());
    EXPECT_EQ(Step(manipulator, "9.999", 1), "10.000");
    manipulator.Init(static_cast<nxVariableTickTable const*>(nullptr));
    EXPECT_EQ(Step(manipulator, "9.75", 1), "10.00");
    manipulator.Init(Euz1());
    manipulator.Init(Price("0.5"));
    EXPECT_FALSE(manipulator.IsVariableTick());
    EXPECT_EQ(Step(manipulator, "9.5", 1), "10.0");

    nxPriceManipulator const quarters(Price("0.25")); // is what its assignment returns
    EXPECT_EQ(&(manipulator = quarters), &quarters);
    EXPECT_EQ(Step(manipulator, "1.00", 1), "1.25");
}

TEST(nxPriceManipulatorStep, MovesByTickOrWholeUnit)
{
    nxPriceManipulator const quarters(Price("0.25"));
    nxPriceManipulator const wholes(Price("5"));
    using Row = std::tuple<nxPriceManipulator, char const*, int, char const*>;
    Row const rows[] = {
        {quarters, "100.00", 1, "100.25"},
        {quarters, "100.00", 3, "100.75"},
        {quarters, "100.00", -3, "99.25"},
        {quarters, "100.00", 0, "100.00"},
        {quarters, "100.0", 1, "100.25"}, // places of the more precise
        {wholes, "-5", 2, "5"},
        {wholes, "0", INT_MIN, "-10737418240"},
        {nxPriceManipulator(), "100.25", 1, "101.25"},
        {nxPriceManipulator(), "100.25", -2, "98.25"},
        {nxPriceManipulator(), "0", INT_MIN, "-2147483648"},
        {nxPriceManipulator(Price("-1")), "100.25", 1, "101.25"}, // a negative tick is none
        {nxPriceManipulator(Euz1()), "9.998", 3, "10.005"},
        {nxPriceManipulator(), "x", 1, "NULL"},
        {quarters, "x", 1, "NULL"},
    };
    for (auto const& [manipulator, price, ticks, moved] : rows)
    {
        EXPECT_EQ(Step(manipulator, price, ticks), moved) << price << " by " << ticks;
        nxDecimal single = Price(price);
        ticks == 1 ? manipulator.Increment(single) : manipulator.Decrement(single);
        if (ticks == 1)
        {
            EXPECT_EQ(single.GetAsLogString('.'), moved) << price;
            manipulator.Decrement(single);
            EXPECT_TRUE(single == Price(price)) << price;
        }
    }
}

TEST(nxPriceManipulatorRound, GoesByTheTickInForce)
{
    using Row = std::tuple<nxPriceManipulator, char const*, nxEnumValue, char const*>;
    Row const rows[] = {
        {nxPriceManipulator(), "100.13", NX_ROUNDING_METHOD_UP, "100.13"},
        {nxPriceManipulator(Price("0.25")), "100.13", NX_ROUNDING_METHOD_UP, "100.25"},
        {nxPriceManipulator(Price("0.25")), "-100.13", NX_ROUNDING_METHOD_UP, "-100.00"},
        {nxPriceManipulator(Euz1()), "9.9996", NX_ROUNDING_METHOD_DOWN, "9.999"}, // by the lower range's tick
        {nxPriceManipulator(Euz1()), "10.0026", NX_ROUNDING_METHOD_NEAREST, "10.005"},
        {nxPriceManipulator(Euz1()), "x", NX_ROUNDING_METHOD_UP, "NULL"},
    };
    for (auto const& [manipulator, text, method, rounded] : rows)
    {
        nxDecimal price = Price(text);
        manipulator.RoundToValidPrice(nxRoundingMethodEnum(method), price);
        EXPECT_EQ(price.GetAsLogString('.'), rounded) << text;
        nxDecimal member = Price(text);
        member.Round(manipulator, nxRoundingMethodEnum(method));
        EXPECT_EQ(member.GetAsLogString('.'), rounded) << text;
    }
    // Even a negative tick is passed on; its multiples are those of its magnitude.
    nxDecimal price = Price("7");
    nxPriceManipulator(Price("-2")).RoundToValidPrice(nxRoundingMethodEnum(NX_ROUNDING_METHOD_DOWN), price);
    EXPECT_EQ(price.GetAsString('.'), "6");
}

TEST(nxPriceManipulatorDifference, CountsStepsFromTheLowerPrice)
{
    nxPriceManipulator const quarters(Price("0.25"));
    EXPECT_EQ(Difference(quarters, "100.00", "100.75"), 3u);
    EXPECT_EQ(Difference(quarters, "100.75", "100.00"), 3u);
    EXPECT_EQ(Difference(quarters, "100.00", "100.00"), 0u);
    EXPECT_EQ(Difference(quarters, "100.00", "100.30"), 2u); // the last step jumps over
    EXPECT_EQ(Difference(nxPriceManipulator(Euz1()), "9.998", "10.005"), 3u);
    EXPECT_EQ(Difference(nxPriceManipulator(Euz1()), "-10.005", "-9.998"), 3u);
    EXPECT_EQ(Difference(nxPriceManipulator(), "1.5", "4"), 3u);
    EXPECT_TRUE(quarters.GetPriceDifferenceInTicks(Price("x"), Price("1")).IsNull());
    EXPECT_TRUE(quarters.GetPriceDifferenceInTicks(Price("1"), nxDecimal::GetNoChangeDecimal()).IsNull());
    // The count ends at a step that doesn't move: a tick that vanishes beside the price, which adds in doubles.
    nxPriceManipulator const tiny(Price("0.0000001"));
    EXPECT_EQ(Difference(tiny, "90000000000", "90000000001"), 0u);
}
