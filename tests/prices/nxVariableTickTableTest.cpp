// How a ladder answers and steps: over its boundaries, around zero, off the ladder, and with nothing in it.
#include "core/prices/nxVariableTickTable.h"

#include "tests/concurrency/RunTogether.h"
#include "tests/prices/nxAllocationCount.h"

#include <gtest/gtest.h>

#include <climits>
#include <tuple>
#include <type_traits>

static_assert(!std::is_copy_constructible_v<nxVariableTickTable> &&
              !std::is_copy_assignable_v<nxVariableTickTable>);
static_assert(!std::has_virtual_destructor_v<nxVariableTickTable>);

namespace
{
class Ladder : public nxVariableTickTable
{
public:
    using Range = std::vector<std::pair<nxDecimal, nxDecimal>>::const_iterator;

    Ladder(std::initializer_list<std::pair<char const*, char const*>> ranges)
    {
        for (auto const& [top, increment] : ranges)
            Add(top, increment);
    }

    // An empty top is that of a topmost range.
    void Add(std::string const& top, std::string const& increment)
    {
        top.empty() ? _AddTopRange(nxDecimal(increment, '.'))
                    : _AddRange(nxDecimal(top, '.'), nxDecimal(increment, '.'));
    }

    bool IsSound() const
    {
        return _CheckConstraints();
    }

    std::string RoundingIncrement(std::string const& price) const
    {
        return _GetIncrementForPrice(nxDecimal(price, '.')).GetAsString('.');
    }

    std::string Increment(std::string const& price, int ticks) const
    {
        nxDecimal value(price, '.');
        nxVariableTickTable::Increment(value, ticks);
        return value.GetAsLogString('.');
    }

    std::string Round(std::string const& price, nxEnumValue method) const
    {
        nxDecimal value(price, '.');
        RoundToValidTick(nxRoundingMethodEnum(method), value);
        return value.GetAsLogString('.');
    }

    mutable int searches = 0;

protected:
    void _SetCache(Range range) const override
    {
        ++searches;
        nxVariableTickTable::_SetCache(range);
    }
};

// The tick is 0.001 up to 9.999 and 0.005 above.
Ladder const& Euz1()
{
    static Ladder const ladder{{"9.999", "0.001"}, {"", "0.005"}};
    return ladder;
}

std::string Tick(Ladder const& ladder, std::string const& price)
{
    return ladder.GetTickIncrement(nxDecimal(price, '.')).GetAsString('.');
}
} // namespace

TEST(nxVariableTickTableStep, TakesThePlacesOfTheRangeWhereItLands)
{
    Ladder const coarser{{"0.9", "0.1"}, {"", "1.00"}};
    EXPECT_EQ(coarser.Increment("0.8", 1), "0.9");
    EXPECT_EQ(coarser.Increment("0.9", 1), "1.00");
    EXPECT_EQ(coarser.Increment("1.00", -1), "0.9");
    EXPECT_EQ(coarser.Increment("-0.9", -1), "-1.00");
    // A step that carries zero past the first range is above zero when that is judged.
    Ladder const leap{{"0.5", "1"}, {"", "1.00"}};
    EXPECT_EQ(leap.Increment("0", 1), "1.00");
    EXPECT_EQ(leap.Increment("0", -1), "-1.00");
    // The lower tick is taken once its own reaches the lower top.
    Ladder const fives{{"10", "1"}, {"", "5.0"}};
    EXPECT_EQ(fives.Increment("20.0", -1), "15.0");
    EXPECT_EQ(fives.Increment("15.0", -1), "14"); // five less is the top itself
    EXPECT_EQ(fives.Increment("-15.0", 1), "-14");
    EXPECT_EQ(fives.Increment("-15.1", 1), "-10.1");
    Ladder const open{{"1", "0.1"}}; // has no range to step into
    EXPECT_EQ(open.Increment("1.0", 1), "1.1");
    EXPECT_EQ(open.Increment("-1.0", -1), "-1.1");

    EXPECT_EQ(Euz1().Increment("1.23456", 0), "1.23456");
    // Digits that the tick has not are cut, so a price off the ladder may even fall by a step up.
    EXPECT_EQ(Euz1().Increment("1.23456", 1), "1.235");
    Ladder const warrants{{"0.009", "0.001"}, {"", "0.01"}};
    EXPECT_EQ(warrants.Increment("0.0085", 1), "0.00");
}

TEST(nxVariableTickTableStep, LeavesWhatIsNotValid)
{
    for (nxDecimal const& unset : {nxDecimal::GetNullDecimal(), nxDecimal::GetNoChangeDecimal()})
    {
        nxDecimal price = unset;
        Euz1().nxVariableTickTable::Increment(price);
        Euz1().Decrement(price);
        Euz1().nxVariableTickTable::Increment(price, 2);
        Euz1().RoundToValidTick(nxRoundingMethodEnum(NX_ROUNDING_METHOD_UP), price);
        EXPECT_EQ(price, unset);
        EXPECT_EQ(Euz1().NumberOfDecimalPlaces(unset), 3);
    }
}

TEST(nxVariableTickTableLookup, IncrementsDifferBetweenATopAndOneTickAboveIt)
{
    using Row = std::tuple<char const*, char const*, char const*>;
    constexpr Row rows[] = {
        {"3.000", "0.001", "0.001"},  {"-3.000", "0.001", "0.001"},  {"9.999", "0.001", "0.001"},
        {"9.9995", "0.005", "0.001"}, {"-9.9995", "0.005", "0.001"}, {"10.000", "0.005", "0.005"},
        {"10", "0.005", "0.005"},     {"1000000", "0.005", "0.005"},
    };
    for (auto const& [price, tick, roundingIncrement] : rows)
    {
        EXPECT_EQ(Tick(Euz1(), price), tick) << price;
        EXPECT_EQ(Euz1().RoundingIncrement(price), roundingIncrement) << price;
    }
    EXPECT_EQ(Euz1().Round("9.9996", NX_ROUNDING_METHOD_DOWN), "9.999");
    EXPECT_EQ(Euz1().Round("10.0024", NX_ROUNDING_METHOD_NEAREST), "10.000");
    EXPECT_EQ(Euz1().Round("-10.0026", NX_ROUNDING_METHOD_UP), "-10.000");
    nxDecimal price = nxDecimal::ConstructFromValueAndDecimalPlaces(LLONG_MIN, 3); // has no magnitude
    EXPECT_EQ(Euz1().GetTickIncrement(price).GetAsString('.'), "0.001");
    Euz1().RoundToValidTick(nxRoundingMethodEnum(NX_ROUNDING_METHOD_DOWN), price);
    EXPECT_TRUE(price.IsValid());
}

TEST(nxVariableTickTableLookup, AnEmptyTableStepsByWholeUnits)
{
    Ladder const empty{};
    EXPECT_EQ(empty.GetMinimumTickIncrement().GetAsString('.'), "1");
    EXPECT_EQ(Tick(empty, "2.50"), "1");
    EXPECT_EQ(empty.NumberOfDecimalPlaces(nxDecimal("2.50", '.')), 0);
    EXPECT_EQ(empty.Increment("2.50", 1), "3.50");
    EXPECT_EQ(empty.Increment("2.50", -1), "1.50");
}

TEST(nxVariableTickTableCache, IsSetByASearchAlone)
{
    Ladder ladder{{"1", "0.1"}, {"2", "0.2"}, {"", "0.5"}};
    EXPECT_EQ(Tick(ladder, "0.5"), "0.1"); // a new cache is the first range
    EXPECT_EQ(ladder.searches, 0);
    EXPECT_EQ(Tick(ladder, "1.5"), "0.2");
    EXPECT_EQ(Tick(ladder, "-2"), "0.2");
    EXPECT_EQ(ladder.searches, 1);
    EXPECT_EQ(Tick(ladder, "1"), "0.1");
    EXPECT_EQ(Tick(ladder, "2.01"), "0.5");
    EXPECT_EQ(ladder.searches, 3);
    ladder.Add("", "1"); // resets the cache, so the next lookup above the first range searches
    EXPECT_EQ(Tick(ladder, "2.01"), "0.5");
    EXPECT_EQ(ladder.searches, 4);

    Ladder const open{{"1", "0.1"}, {"2", "0.2"}}; // a lookup that runs off the list leaves the cache
    EXPECT_EQ(Tick(open, "1.5"), "0.2");
    EXPECT_EQ(Tick(open, "3"), "1");
    EXPECT_EQ(Tick(open, "1.5"), "0.2");
    EXPECT_EQ(open.searches, 1);
}

TEST(nxVariableTickTableCache, ServesThreadsThatLookInDifferentRanges)
{
    Ladder const ladder{{"1", "0.1"}, {"2", "0.2"}, {"", "0.5"}};
    RunTogether(3,
                [&ladder](int thread)
                {
                    nxDecimal const price(5 + 10 * thread, 10, 1); // 0.5, 1.5, 2.5
                    nxDecimal const& expected =
                        ladder.GetRangeData()[static_cast<std::size_t>(thread)].second;
                    for (int round = 0; round < 20000; ++round)
                        ASSERT_EQ(&ladder.GetTickIncrement(price), &expected);
                });
}

TEST(nxVariableTickTableConstraints, RefuseWhatIsNoLadder)
{
    EXPECT_TRUE(Euz1().IsSound());
    EXPECT_TRUE(Ladder({{"9223372036854775807", "5"}}).IsSound());
    EXPECT_FALSE(Ladder{}.IsSound());
    EXPECT_FALSE(Ladder({{"9.999", "0.001"}}).IsSound());                      // no topmost range
    EXPECT_FALSE(Ladder({{"2", "0.1"}, {"2", "0.2"}, {"", "1"}}).IsSound());   // equal tops
    EXPECT_FALSE(Ladder({{"2", "0.1"}, {"1.9", "0.2"}, {"", "1"}}).IsSound()); // falling tops
    EXPECT_FALSE(Ladder({{"0.0000", "0.1"}, {"", "1"}}).IsSound());            // a top at zero
    EXPECT_FALSE(Ladder({{"2", "0.00"}, {"", "1"}}).IsSound());                // no increment
    EXPECT_FALSE(Ladder({{"2", "-0.1"}, {"", "1"}}).IsSound());                // a falling step
    EXPECT_FALSE(Ladder({{"2", "x"}, {"", "1"}}).IsSound());                   // null increment
    EXPECT_FALSE(Ladder({{"x", "0.1"}, {"", "1"}}).IsSound());                 // null top
}
