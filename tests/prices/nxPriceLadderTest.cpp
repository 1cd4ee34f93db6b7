// Fixed ticks, ladders and neither: how prices move by them, what a ladder answers, and what is no ladder.
// Also the catalogue: its names, its digits and how it is logged. PriceFigures.cpp walks its ladders.
#include "core/numbers/nxArithmetic.h"
#include "core/prices/nxVariableTickTableCatalogue.h"
#include "tests/concurrency/RunTogether.h"
#include "tests/logging/nxRecordingLogDevice.h"
#include "tests/prices/ExactLadder.h"
#include "tests/prices/nxPriceRule.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <set>
#include <tuple>
#include <type_traits>

static_assert(std::is_copy_constructible_v<nxPriceManipulator> && !std::is_polymorphic_v<nxPriceManipulator>);
static_assert(!std::is_copy_constructible_v<nxVariableTickTable> &&
              !std::is_copy_assignable_v<nxVariableTickTable>);
static_assert(!std::has_virtual_destructor_v<nxVariableTickTable>);
static_assert(sizeof(nxVariableTickTableCHIX_EUZ1) == sizeof(nxVariableTickTable));

namespace
{
std::string Step(nxPriceManipulator const& manipulator, std::string const& price, int ticks)
{
    nxDecimal value = Number(price), single = value;
    manipulator.Increment(value, ticks);
    ticks > 0 ? manipulator.Increment(single) : manipulator.Decrement(single);
    bool const isSingle = ticks == 1 || ticks == -1;
    EXPECT_TRUE(!isSingle || single.GetAsLogString('.') == value.GetAsLogString('.'));
    return value.GetAsLogString('.');
}

void CheckRound(char const* rule, char const* price, nxEnumValue method, char const* rounded)
{
    nxDecimal value = Number(price);
    Manipulator(rule).RoundToValidPrice(nxRoundingMethodEnum(method), value);
    EXPECT_EQ(value.GetAsLogString('.'), rounded) << price;
}

void CheckRule(char const* rule, bool isValid, bool isVariable, char const* minimumTick, unsigned int places)
{
    nxPriceManipulator const manipulator = Manipulator(rule);
    EXPECT_TRUE(manipulator.IsValid() == isValid && manipulator.IsVariableTick() == isVariable) << rule;
    EXPECT_EQ(manipulator.GetMinimumTickIncrement().GetAsLogString('.'), minimumTick);
    EXPECT_EQ(manipulator.NumberOfDecimalPlaces(Number("10")), places) << rule;
}

Ladder const euz1("9.999:0.001 0.005");

// A host's static object, which may be made before those of a library that is linked statically.
std::string const identifierAtStart = nxVariableTickTableContainer::GetVariableTickTableID("EUREX_165");

using nxPricesLog = nxRecordingTest;
} // namespace

TEST(nxPriceManipulator, StepsRoundsAndCountsByItsRule)
{
#define NX_STEP(rule, price, ticks, moved)                                                                   \
    EXPECT_EQ(Step(Manipulator(rule), price, ticks), moved) << (price) << " by " << (ticks);
#define NX_ROUND(...) CheckRound(__VA_ARGS__);
#define NX_RULE(...) CheckRule(__VA_ARGS__);
#define NX_DIFFERENCE(rule, a, b, count)                                                                     \
    EXPECT_EQ(Manipulator(rule).GetPriceDifferenceInTicks(Number(a), Number(b)).GetValue(), count);
#include "tests/prices/nxPriceSteps.def"
    nxDecimal noChange = nxDecimal::GetNoChangeDecimal();
    EXPECT_TRUE(Manipulator("0.25").GetPriceDifferenceInTicks(Number("1"), noChange).IsNull());
    euz1.RoundToValidTick(nxRoundingMethodEnum(NX_ROUNDING_METHOD_UP), noChange);
    EXPECT_EQ(noChange, nxDecimal::GetNoChangeDecimal());
}

TEST(nxPriceManipulator, TakesAnotherRule)
{
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

TEST(nxVariableTickTable, AnswersWhatHasNoMagnitudeAndTellsWhatIsNoLadder)
{
    nxDecimal const least = nxDecimal::ConstructFromValueAndDecimalPlaces(LLONG_MIN, 3);
    EXPECT_EQ(euz1.GetTickIncrement(least).GetAsString('.'), "0.001");
    EXPECT_EQ(euz1.NumberOfDecimalPlaces(nxDecimal::GetNullDecimal()), 3);
    EXPECT_TRUE(euz1._CheckConstraints() && Ladder("9223372036854775807:5")._CheckConstraints());
    // No ladder is nothing; no topmost range; equal, falling, zero and null tops; increments of zero, below
    // it and null.
    for (char const* const ranges : {"", "9.999:0.001", "2:0.1 2:0.2 1", "2:0.1 1.9:0.2 1", "0.0000:0.1 1",
                                     "x:0.1 1", "2:0.00 1", "2:-0.1 1", "2:x 1"})
        EXPECT_FALSE(Ladder(ranges)._CheckConstraints()) << ranges;
}

TEST(nxVariableTickTableCache, IsSetByASearchAlone)
{
    Ladder ladder("1:0.1 2:0.2 0.5");
    using Row = std::tuple<char const*, char const*, int>;
    for (auto const& [price, tick, searches] :
         {Row{"0.5", "0.1", 0}, // a new cache is the first range
          Row{"1.5", "0.2", 1}, Row{"-2", "0.2", 1}, Row{"1", "0.1", 2}, Row{"2.01", "0.5", 3}})
    {
        EXPECT_EQ(ladder.Tick(price), tick);
        EXPECT_EQ(ladder.searches, searches) << price;
    }
    ladder._AddTopRange(Number("1")); // resets the cache, so the next lookup above the first range searches
    EXPECT_EQ(ladder.Tick("2.01"), "0.5");
    EXPECT_EQ(ladder.searches, 4);
    RunTogether(3, // looks in three ranges at once
                [&ladder](int thread)
                {
                    nxDecimal const price(5 + 10 * thread, 10, 1);
                    nxDecimal const* expected =
                        &ladder.GetRangeData()[static_cast<std::size_t>(thread)].second;
                    for (int round = 0; round < 20000; ++round)
                        ASSERT_EQ(&ladder.GetTickIncrement(price), expected);
                });

    Ladder const open("1:0.1 2:0.2"); // a lookup that runs off the list leaves the cache
    for (auto const& [price, tick] : {std::pair("1.5", "0.2"), {"3", "1"}, {"1.5", "0.2"}})
        EXPECT_EQ(open.Tick(price), tick);
    EXPECT_EQ(open.searches, 1);
}

// One unit to either side of a top, at another scale and where that loses digits or wraps too.
TEST(nxVariableTickTableCache, AgreesWithAScanWhateverItHolds)
{
    for (std::string const name : {"CHIX_CPH1", "EURONEXT_23", "CME_02_0_000001", "CXE_xetra_ne4"})
    {
        nxVariableTickTable const& table = *nxVariableTickTableContainer::GetVariableTickTable("VTT_" + name);
        auto const& ranges = table.GetRangeData();
        for (auto const& [top, increment] : ranges)
            for (unsigned int i = 0; i < 2 * 3 * 3 * 19; ++i)
            {
                nxDecimal price = top;
                auto const places = static_cast<unsigned char>(i / 18);
                price.SetDecimalPlaces(places, false);
                price = nxDecimal::ConstructFromValueAndDecimalPlaces(
                    nxArithmetic::Add(price.GetValue(), i / 6 % 3 - 1LL), places);
                if (i % 2 != 0)
                    price.InvertSign();
                nxDecimal const magnitude = nxDecimal::Abs(price);
                auto const isBelow = [&magnitude](auto const& range) { return range.first < magnitude; };
                nxDecimal const before[] = {top, top + increment, nxDecimal()};
                (void)table.GetTickIncrement(before[i / 2 % 3]);
                EXPECT_EQ(&table.GetTickIncrement(price), &std::ranges::find_if_not(ranges, isBelow)->second)
                    << name << " at " << price.GetAsString('.') << " after " << i / 2 % 3;
            }
    }
}

// Prices are stored at the places of these digits. FNV-1a over "name TAB top TAB increment LF" by name.
TEST(nxVariableTickTableContainer, HoldsItsNamesAndDigits)
{
    std::set<nxVariableTickTable const*> tables;
    std::uint64_t checksum = 0xcbf29ce484222325;
    for (std::string const& name : std::set<std::string>(std::begin(ladderNames), std::end(ladderNames)))
    {
        EXPECT_EQ(nxVariableTickTableContainer::GetVariableTickTableID(name), "VTT_" + name);
        auto const* const table = nxVariableTickTableContainer::GetVariableTickTable("VTT_" + name);
        ASSERT_NE(table, nullptr) << name;
        tables.insert(table);
        for (auto const& [top, increment] : table->GetRangeData())
            for (char const letter : name + '\t' + top.GetAsString() + '\t' + increment.GetAsString() + '\n')
                checksum = (checksum ^ static_cast<unsigned char>(letter)) * 0x100000001b3;
    }
    EXPECT_EQ(checksum, 0x2b46bd4c4063c689u);
    EXPECT_EQ(tables.size(), 150u); // twins are two tables
    EXPECT_EQ(identifierAtStart, "VTT_EUREX_165");
    EXPECT_EQ(nxVariableTickTableContainer::GetVariableTickTableID("VTT_CHIX_EUZ1"), "");
    EXPECT_EQ(nxVariableTickTableContainer::GetVariableTickTable("CHIX_EUZ1"), nullptr);
}

TEST_F(nxPricesLog, ListsTheCatalogueByName)
{
    nxVariableTickTableContainer::LogRegisteredEntries();
    std::vector<std::string> const messages = Messages();
    ASSERT_EQ(messages.size(), 150u + 787u);
    // Not in the order of registration.
    EXPECT_EQ(messages[0], "Registered Variable tick table. Name: BATS_lse1");
    EXPECT_EQ(messages[1], "Entry #0. Upper bound: 0.0995, Delta: 0.0005");
    auto const euz1Entry = std::ranges::find(messages, "Registered Variable tick table. Name: CHIX_EUZ1");
    ASSERT_LT(euz1Entry, messages.end() - 2);
    EXPECT_EQ(euz1Entry[1], "Entry #0. Upper bound: 9.999, Delta: 0.001");
    EXPECT_EQ(euz1Entry[2], "Entry #1. Upper bound: NONE, Delta: 0.005");
    EXPECT_EQ(std::ranges::count(Levels(), NX_INF), 937);
}

TEST_F(nxPricesLog, TellsOfAStepThatRunsOffTheTable)
{
    Ladder const empty(""); // steps by whole units
    nxDecimal price = Number("2.50");
    empty.Increment(price);
    EXPECT_EQ(price.GetAsString('.'), "3.50");
    empty.Decrement(price);
    EXPECT_EQ(price.GetAsString('.'), "2.50");
    empty.RoundToValidTick(nxRoundingMethodEnum(NX_ROUNDING_METHOD_UP), price);
    EXPECT_EQ(price.GetAsString('.') + empty.Tick("2.50"), "31"); // a look-up alone is silent
    EXPECT_EQ(empty.GetMinimumTickIncrement(), Number("1"));
    EXPECT_EQ(Messages(), std::vector<std::string>(3, "Fatal error in variable tick table"));
    EXPECT_EQ(Levels(), std::vector<unsigned int>(3, NX_FTL));
}
