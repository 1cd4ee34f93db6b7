// The catalogue: its names and its digits. PriceFigures.cpp walks its ladders.
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
