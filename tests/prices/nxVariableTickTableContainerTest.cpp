// The catalogue: its names, its digits, and that no ladder is left when it is walked over its boundaries.
#include "core/prices/nxVariableTickTableContainer.h"

#include "core/numbers/nxArithmetic.h"
#include "core/prices/nxVariableTickTableCatalogue.h"
#include "tests/prices/nxAllocationCount.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <type_traits>

static_assert(std::is_base_of_v<nxVariableTickTable, nxVariableTickTableCHIX_EUZ1>);
static_assert(sizeof(nxVariableTickTableCHIX_EUZ1) == sizeof(nxVariableTickTable));

namespace
{
constexpr char const* names[] = {
#define NX_LADDER_BEGIN(name) #name,
#define NX_RANGE(top, increment)
#define NX_TOP(increment)
#define NX_LADDER_END(name)
#include "core/prices/tables/ladders.def"
};

// A host's static object, which may be made before those of a library that is linked statically.
std::string const identifierAtStart = nxVariableTickTableContainer::GetVariableTickTableID("EUREX_165");

// The ladders whose tops are not all multiples of their increments.
bool IsUneven(std::string const& name)
{
    return name == "EURONEXT_23" || name == "CME_01" || name == "CME_14_0_0001";
}

nxVariableTickTable const& Table(std::string const& name)
{
    return *nxVariableTickTableContainer::GetVariableTickTable(
        nxVariableTickTableContainer::GetVariableTickTableID(name));
}

std::string Step(std::string const& name, std::string const& price, int ticks)
{
    nxDecimal value(price, '.');
    Table(name).Increment(value, ticks);
    return value.GetAsString('.');
}

// Whole numbers of 10^-10, at which every number of the catalogue can be reckoned without rounding.
constexpr unsigned char exactPlaces = 10;

long long Exact(nxDecimal value)
{
    value.SetDecimalPlaces(exactPlaces, false);
    return value.GetValue();
}

struct Rung
{
    long long price;
    unsigned char places;
};

// Three rungs to either side of the top of range `index`, as far as the ranges reach, from the lowest.
std::vector<Rung> RungsAroundTop(nxVariableTickTable const& table, std::size_t index)
{
    auto const& ranges = table.GetRangeData();
    auto const& [top, increment] = ranges[index];
    auto const& [nextTop, nextIncrement] = ranges[index + 1];
    long long const first = index == 0 ? 0 : Exact(ranges[index - 1].first) + Exact(ranges[index - 1].second);
    long long const last = index + 2 == ranges.size() ? Exact(top) * 100 : Exact(nextTop);
    std::vector<Rung> rungs;
    for (long long price = std::max(first, Exact(top) - 3 * Exact(increment)); price <= Exact(top);
         price += Exact(increment))
    {
        rungs.push_back({price, increment.GetDecimalPlaces()});
    }
    long long const above = Exact(top) + Exact(increment);
    for (int step = 0; step < 4 && above + step * Exact(nextIncrement) <= last; ++step)
    {
        rungs.push_back({above + step * Exact(nextIncrement), nextIncrement.GetDecimalPlaces()});
    }
    return rungs;
}

// The rung as a price at its own places, mirrored at zero for the sign -1.
nxDecimal PriceOf(Rung const& rung, int sign)
{
    nxDecimal price = nxDecimal::ConstructFromValueAndDecimalPlaces(sign * rung.price, exactPlaces);
    price.SetDecimalPlaces(rung.places, false);
    return price;
}

void ExpectWalk(nxVariableTickTable const& table, std::vector<Rung> const& rungs, int sign)
{
    for (std::size_t index = 0; index + 1 < rungs.size(); ++index)
    {
        nxDecimal const low = PriceOf(rungs[index], sign);
        nxDecimal const high = PriceOf(rungs[index + 1], sign);
        nxDecimal stepped = low;
        table.Increment(stepped, sign);
        EXPECT_EQ(stepped.GetAsString('.'), high.GetAsString('.'))
            << "away from zero, from " << low.GetAsString('.');
        table.Increment(stepped, -sign);
        EXPECT_EQ(stepped.GetAsString('.'), low.GetAsString('.'))
            << "toward zero, from " << high.GetAsString('.');
        nxDecimal rounded = high;
        table.RoundToValidTick(nxRoundingMethodEnum(NX_ROUNDING_METHOD_DOWN), rounded);
        EXPECT_TRUE(rounded == high) << high.GetAsString('.') << " is no valid price";
    }
}
} // namespace

TEST(nxVariableTickTableContainerNames, AreThreeForEachLadder)
{
    EXPECT_EQ(std::size(names), 150u);
    std::set<nxVariableTickTable const*> tables;
    for (std::string const name : names)
    {
        EXPECT_EQ(nxVariableTickTableContainer::GetVariableTickTableID(name), "VTT_" + name);
        tables.insert(nxVariableTickTableContainer::GetVariableTickTable("VTT_" + name));
        EXPECT_EQ(nxVariableTickTableContainer::GetVariableTickTable(name), nullptr);
    }
    EXPECT_EQ(tables.size(), 150u); // twins are two tables
    EXPECT_EQ(tables.count(nullptr), 0u);
    EXPECT_EQ(identifierAtStart, "VTT_EUREX_165");
    EXPECT_EQ(nxVariableTickTableContainer::GetVariableTickTableID("VTT_CHIX_EUZ1"), "");
    EXPECT_EQ(nxVariableTickTableContainer::GetVariableTickTable(""), nullptr);
}

// Prices are stored at the places of these digits. FNV-1a over "name TAB top TAB increment LF" by name.
TEST(nxVariableTickTableContainerLadders, HoldTheirDigits)
{
    std::uint64_t checksum = 0xcbf29ce484222325;
    for (std::string const& name : std::set<std::string>(std::begin(names), std::end(names)))
        for (auto const& [top, increment] : Table(name).GetRangeData())
            for (char const letter : name + '\t' + top.GetAsString() + '\t' + increment.GetAsString() + '\n')
                checksum = (checksum ^ static_cast<unsigned char>(letter)) * 0x100000001b3;
    EXPECT_EQ(checksum, 0x2b46bd4c4063c689u);
}

TEST(nxVariableTickTableContainerLadders, AreNotLeftByAWalkOverABoundary)
{
    for (std::string const name : names)
    {
        nxVariableTickTable const& table = Table(name);
        for (std::size_t index = 0; !IsUneven(name) && index + 1 < table.GetRangeData().size(); ++index)
        {
            SCOPED_TRACE(name + " over " + table.GetRangeData()[index].first.GetAsString('.'));
            std::vector<Rung> const rungs = RungsAroundTop(table, index);
            ASSERT_GE(rungs.size(), 3u);
            ExpectWalk(table, rungs, 1);
            ExpectWalk(table, rungs, -1);
        }
        nxDecimal const tick = table.GetMinimumTickIncrement();
        nxDecimal price = tick;
        table.Increment(price, -2); // across zero by the first tick
        EXPECT_EQ(price.GetAsString('.'), '-' + tick.GetAsString('.')) << name;
        table.Increment(price, 2);
        EXPECT_EQ(price.GetAsString('.'), tick.GetAsString('.')) << name;
    }
}

TEST(nxVariableTickTableContainerLadders, KeepTheirOddTops)
{
    EXPECT_EQ(Step("EURONEXT_23", "0.1999", 1), "0.2000");
    EXPECT_EQ(Step("EURONEXT_23", "0.2000", 1), "0.2008");
    EXPECT_EQ(Step("EURONEXT_23", "0.4992", 1), "0.5000");
    EXPECT_EQ(Step("EURONEXT_23", "0.5000", -1), "0.4992");
    EXPECT_EQ(Step("CME_01", "495", 1), "500");
    EXPECT_EQ(Step("CME_01", "500", 1), "510");
    EXPECT_EQ(Step("CXE_tck_0010", "1.000", 1), "1.001");
    EXPECT_EQ(Step("CHIX_tck_0010", "1.000", 1), "1.0010"); // the same tick at another scale
}

TEST(nxVariableTickTableContainerLookup, AllocatesNothingForAKnownLadder)
{
    if (!nxAllocationCount::IsPossible())
        GTEST_SKIP();
    std::string const identifier = "VTT_CXE_mifid_5";
    nxDecimal price("19.995", '.');
    nxAllocationCount const count;
    nxVariableTickTable const* const table = nxVariableTickTableContainer::GetVariableTickTable(identifier);
    table->Increment(price);
    table->Increment(price, -400);
    (void)table->GetTickIncrement(price);
    EXPECT_EQ(count.Get(), 0u);
}

namespace
{
// The rule of a lookup without its cache.
nxDecimal const& ScannedIncrement(nxVariableTickTable const& table, nxDecimal const& price)
{
    nxDecimal const magnitude = nxDecimal::Abs(price);
    auto const& ranges = table.GetRangeData();
    return std::ranges::find_if(ranges,
                                [&magnitude](auto const& range) { return !(range.first < magnitude); })
        ->second;
}

// One unit to either side of a top, at another scale and where that loses digits or wraps too.
std::vector<nxDecimal> PricesBeside(nxDecimal const& top)
{
    std::vector<nxDecimal> prices;
    for (unsigned char places = 0; places <= 18; ++places)
    {
        for (long long const offset : {-1, 0, 1})
        {
            nxDecimal price = top;
            price.SetDecimalPlaces(places, false);
            price = nxDecimal::ConstructFromValueAndDecimalPlaces(nxArithmetic::Add(price.GetValue(), offset),
                                                                  places);
            prices.push_back(price);
            price.InvertSign();
            prices.push_back(price);
        }
    }
    return prices;
}
} // namespace

TEST(nxVariableTickTableContainerLookup, AgreesWithAScanWhateverTheCacheHolds)
{
    for (std::string const name :
         {"CHIX_CPH1", "CXE_mifid_1", "EURONEXT_23", "CME_02_0_000001", "CXE_xetra_ne4"})
    {
        nxVariableTickTable const& table = Table(name);
        for (auto const& [top, increment] : table.GetRangeData())
        {
            for (nxDecimal const& price : PricesBeside(top))
            {
                for (nxDecimal const& before : {top, top + increment, nxDecimal()})
                {
                    (void)table.GetTickIncrement(before);
                    EXPECT_EQ(&table.GetTickIncrement(price), &ScannedIncrement(table, price))
                        << name << " at " << price.GetAsString('.') << " after " << before.GetAsString('.');
                }
            }
        }
    }
}
