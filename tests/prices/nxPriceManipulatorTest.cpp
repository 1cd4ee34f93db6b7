// Fixed ticks, ladders and neither: how prices move by them, what a ladder answers, and what is no ladder.
#include "core/prices/nxPriceManipulator.h"

#include "core/numbers/nxArithmetic.h"
#include "core/prices/nxVariableTickTableContainer.h"
#include "tests/concurrency/RunTogether.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <map>
#include <sstream>
#include <tuple>
#include <type_traits>

static_assert(std::is_copy_constructible_v<nxPriceManipulator> && !std::is_polymorphic_v<nxPriceManipulator>);
static_assert(!std::is_copy_constructible_v<nxVariableTickTable> &&
              !std::is_copy_assignable_v<nxVariableTickTable>);
static_assert(!std::has_virtual_destructor_v<nxVariableTickTable>);

namespace
{
nxDecimal Number(std::string const& text)
{
    return nxDecimal(text, '.');
}

/// A ladder of ranges in words, such as "9.999:0.001 0.005": a topmost range has no top.
class Ladder : public nxVariableTickTable
{
public:
    using Range = std::vector<std::pair<nxDecimal, nxDecimal>>::const_iterator;

    explicit Ladder(std::string const& ranges)
    {
        std::istringstream words(ranges);
        for (std::string word; words >> word;)
        {
            std::size_t const colon = word.find(':');
            colon == std::string::npos
                ? _AddTopRange(Number(word))
                : _AddRange(Number(word.substr(0, colon)), Number(word.substr(colon + 1)));
        }
    }

    using nxVariableTickTable::_AddTopRange;
    using nxVariableTickTable::_CheckConstraints;
    using nxVariableTickTable::_GetIncrementForPrice;

    std::string Tick(std::string const& price) const
    {
        return GetTickIncrement(Number(price)).GetAsString('.');
    }

    mutable int searches = 0;

protected:
    void _SetCache(Range range) const override
    {
        ++searches;
        nxVariableTickTable::_SetCache(range);
    }
};

nxPriceManipulator Manipulator(std::string const& rule)
{
    static std::map<std::string, Ladder> ladders;
    if (rule.starts_with("VTT_"))
        return nxPriceManipulator(nxVariableTickTableContainer::GetVariableTickTable(rule));
    if (rule.find(':') != std::string::npos)
        return nxPriceManipulator(&ladders.try_emplace(rule, rule).first->second);
    return rule.empty() ? nxPriceManipulator() : nxPriceManipulator(Number(rule));
}

std::string Step(nxPriceManipulator const& manipulator, std::string const& price, int ticks)
{
    nxDecimal value = Number(price);
    manipulator.Increment(value, ticks);
    return value.GetAsLogString('.');
}

constexpr std::tuple<char const*, char const*, int, char const*> steps[] = {
#define NX_STEP(rule, price, ticks, moved) {rule, price, ticks, moved},
#define NX_ROUND(rule, price, method, rounded)
#define NX_DIFFERENCE(rule, a, b, count)
#include "tests/prices/nxPriceSteps.def"
};

constexpr std::tuple<char const*, char const*, nxEnumValue, char const*> roundings[] = {
#define NX_STEP(rule, price, ticks, moved)
#define NX_ROUND(rule, price, method, rounded) {rule, price, method, rounded},
#define NX_DIFFERENCE(rule, a, b, count)
#include "tests/prices/nxPriceSteps.def"
};

constexpr std::tuple<char const*, char const*, char const*, unsigned int> differences[] = {
#define NX_STEP(rule, price, ticks, moved)
#define NX_ROUND(rule, price, method, rounded)
#define NX_DIFFERENCE(rule, a, b, count) {rule, a, b, count},
#include "tests/prices/nxPriceSteps.def"
};

Ladder const euz1("9.999:0.001 0.005");
} // namespace

TEST(nxPriceManipulator, StepsRoundsAndCountsByItsRule)
{
    for (auto const& [rule, price, ticks, moved] : steps)
    {
        EXPECT_EQ(Step(Manipulator(rule), price, ticks), moved) << price << " by " << ticks;
        nxDecimal single = Number(price);
        ticks == 1 ? Manipulator(rule).Increment(single) : Manipulator(rule).Decrement(single);
        EXPECT_TRUE(single.GetAsLogString('.') == moved || (ticks != 1 && ticks != -1)) << price;
    }
    for (auto const& [rule, text, method, rounded] : roundings)
    {
        nxDecimal price = Number(text);
        Manipulator(rule).RoundToValidPrice(nxRoundingMethodEnum(method), price);
        EXPECT_EQ(price.GetAsLogString('.'), rounded) << text;
        nxDecimal member = Number(text);
        member.Round(Manipulator(rule), nxRoundingMethodEnum(method));
        EXPECT_EQ(member.GetAsLogString('.'), rounded) << text;
    }
    for (auto const& [rule, a, b, count] : differences)
        EXPECT_EQ(Manipulator(rule).GetPriceDifferenceInTicks(Number(a), Number(b)).GetValue(), count) << a;
    nxDecimal noChange = nxDecimal::GetNoChangeDecimal();
    EXPECT_TRUE(Manipulator("0.25").GetPriceDifferenceInTicks(Number("1"), noChange).IsNull());
    euz1.RoundToValidTick(nxRoundingMethodEnum(NX_ROUNDING_METHOD_UP), noChange);
    EXPECT_EQ(noChange, nxDecimal::GetNoChangeDecimal());
}

TEST(nxPriceManipulator, TellsUnsetFixedAndVariable)
{
    using Row = std::tuple<char const*, bool, bool, char const*, unsigned int>;
    for (auto const& [rule, valid, variable, minimumTick, placesAt10] :
         {Row{"", false, false, "0", 0}, Row{"0.25", true, false, "0.25", 2},
          Row{"-0.25", false, false, "-0.25", 2}, Row{"x", false, false, "NULL", 0},
          Row{"VTT_CHIX_EUZ1", true, true, "0.001", 3}})
    {
        nxPriceManipulator const manipulator = Manipulator(rule);
        EXPECT_EQ(manipulator.IsValid(), valid) << rule;
        EXPECT_EQ(manipulator.IsVariableTick(), variable) << rule;
        EXPECT_EQ(manipulator.GetMinimumTickIncrement().GetAsLogString('.'), minimumTick);
        EXPECT_EQ(manipulator.NumberOfDecimalPlaces(Number("10")), placesAt10) << rule;
    }
    nxPriceManipulator manipulator(Number("0.25")); // a fixed tick stays under a table
    manipulator.Init(&euz1);
    EXPECT_EQ(Step(manipulator, "9.999", 1), "10.000");
    manipulator.Init(static_cast<nxVariableTickTable const*>(nullptr));
    EXPECT_EQ(Step(manipulator, "9.75", 1), "10.00");
    manipulator.Init(&euz1);
    manipulator.Init(Number("0.5"));
    EXPECT_FALSE(manipulator.IsVariableTick());
    EXPECT_EQ(Step(manipulator, "9.5", 1), "10.0");

    nxPriceManipulator const quarters(Number("0.25")); // is what its assignment returns
    EXPECT_EQ(&(manipulator = quarters), &quarters);
    EXPECT_EQ(Step(manipulator, "1.00", 1), "1.25");
}

TEST(nxVariableTickTable, IncrementsDifferBetweenATopAndOneTickAboveIt)
{
    using Row = std::tuple<char const*, char const*, char const*>;
    for (auto const& [price, tick, roundingIncrement] :
         {Row{"-3.000", "0.001", "0.001"}, Row{"9.999", "0.001", "0.001"}, Row{"9.9995", "0.005", "0.001"},
          Row{"-9.9995", "0.005", "0.001"}, Row{"10.000", "0.005", "0.005"}, Row{"10", "0.005", "0.005"}})
    {
        EXPECT_EQ(euz1.Tick(price), tick) << price;
        EXPECT_EQ(euz1._GetIncrementForPrice(Number(price)).GetAsString('.'), roundingIncrement) << price;
    }
    nxDecimal price = nxDecimal::ConstructFromValueAndDecimalPlaces(LLONG_MIN, 3); // has no magnitude
    EXPECT_EQ(euz1.GetTickIncrement(price).GetAsString('.'), "0.001");
    euz1.RoundToValidTick(nxRoundingMethodEnum(NX_ROUNDING_METHOD_DOWN), price);
    EXPECT_TRUE(price.IsValid());
    EXPECT_EQ(euz1.NumberOfDecimalPlaces(nxDecimal::GetNullDecimal()), 3);

    Ladder const empty(""); // steps by whole units
    EXPECT_EQ(empty.GetMinimumTickIncrement().GetAsString('.'), "1");
    EXPECT_EQ(empty.Tick("2.50"), "1");
    EXPECT_EQ(empty.NumberOfDecimalPlaces(Number("2.50")), 0);
    EXPECT_EQ(Step(nxPriceManipulator(&empty), "2.50", -1), "1.50");
}

TEST(nxVariableTickTableCache, IsSetByASearchAlone)
{
    Ladder ladder("1:0.1 2:0.2 0.5");
    EXPECT_EQ(ladder.Tick("0.5"), "0.1"); // a new cache is the first range
    EXPECT_EQ(ladder.searches, 0);
    EXPECT_EQ(ladder.Tick("1.5"), "0.2");
    EXPECT_EQ(ladder.Tick("-2"), "0.2");
    EXPECT_EQ(ladder.searches, 1);
    EXPECT_EQ(ladder.Tick("1"), "0.1");
    EXPECT_EQ(ladder.Tick("2.01"), "0.5");
    EXPECT_EQ(ladder.searches, 3);
    ladder._AddTopRange(Number("1")); // resets the cache, so the next lookup above the first range searches
    EXPECT_EQ(ladder.Tick("2.01"), "0.5");
    EXPECT_EQ(ladder.searches, 4);

    Ladder const open("1:0.1 2:0.2"); // a lookup that runs off the list leaves the cache
    EXPECT_EQ(open.Tick("1.5"), "0.2");
    EXPECT_EQ(open.Tick("3"), "1");
    EXPECT_EQ(open.Tick("1.5"), "0.2");
    EXPECT_EQ(open.searches, 1);
}

TEST(nxVariableTickTableCache, ServesThreadsThatLookInDifferentRanges)
{
    Ladder const ladder("1:0.1 2:0.2 0.5");
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

// One unit to either side of a top, at another scale and where that loses digits or wraps too.
TEST(nxVariableTickTableCache, AgreesWithAScanWhateverItHolds)
{
    for (std::string const name :
         {"VTT_CHIX_CPH1", "VTT_EURONEXT_23", "VTT_CME_02_0_000001", "VTT_CXE_xetra_ne4"})
    {
        nxVariableTickTable const& table = *nxVariableTickTableContainer::GetVariableTickTable(name);
        auto const& ranges = table.GetRangeData();
        auto const check = [&](nxDecimal const& price, nxDecimal const& before)
        {
            nxDecimal const magnitude = nxDecimal::Abs(price);
            auto const found = std::ranges::find_if(ranges, [&magnitude](auto const& range)
                                                    { return !(range.first < magnitude); });
            (void)table.GetTickIncrement(before);
            EXPECT_EQ(&table.GetTickIncrement(price), &found->second)
                << name << " at " << price.GetAsString('.') << " after " << before.GetAsString('.');
        };
        for (auto const& [top, increment] : ranges)
        {
            for (unsigned int i = 0; i < 19 * 3; ++i)
            {
                nxDecimal price = top;
                auto const places = static_cast<unsigned char>(i / 3);
                price.SetDecimalPlaces(places, false);
                price = nxDecimal::ConstructFromValueAndDecimalPlaces(
                    nxArithmetic::Add(price.GetValue(), i % 3 - 1LL), places);
                for (nxDecimal const& before : {top, top + increment, nxDecimal()})
                {
                    check(price, before);
                    price.InvertSign();
                }
            }
        }
    }
}

TEST(nxVariableTickTableConstraints, RefuseWhatIsNoLadder)
{
    EXPECT_TRUE(euz1._CheckConstraints());
    EXPECT_TRUE(Ladder("9223372036854775807:5")._CheckConstraints());
    // Nothing; no topmost range; equal, falling, zero and null tops; increments of zero, below it and null.
    for (char const* const ranges : {"", "9.999:0.001", "2:0.1 2:0.2 1", "2:0.1 1.9:0.2 1", "0.0000:0.1 1",
                                     "x:0.1 1", "2:0.00 1", "2:-0.1 1", "2:x 1"})
        EXPECT_FALSE(Ladder(ranges)._CheckConstraints()) << ranges;
}
