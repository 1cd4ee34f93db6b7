// The catalogue: its names, its digits and how it is logged. PriceFigures.cpp walks its ladders.
#include "core/prices/nxVariableTickTableContainer.h"

#include "core/prices/nxVariableTickTableCatalogue.h"
#include "tests/logging/nxRecordingLogDevice.h"

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

class nxPricesLog : public nxRecordingTest
{
};
} // namespace

// Prices are stored at the places of these digits. FNV-1a over "name TAB top TAB increment LF" by name.
TEST(nxVariableTickTableContainer, HoldsItsNamesAndDigits)
{
    EXPECT_EQ(std::size(names), 150u);
    std::set<nxVariableTickTable const*> tables;
    std::uint64_t checksum = 0xcbf29ce484222325;
    for (std::string const& name : std::set<std::string>(std::begin(names), std::end(names)))
    {
        EXPECT_EQ(nxVariableTickTableContainer::GetVariableTickTableID(name), "VTT_" + name);
        EXPECT_EQ(nxVariableTickTableContainer::GetVariableTickTable(name), nullptr);
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
    EXPECT_EQ(nxVariableTickTableContainer::GetVariableTickTable(""), nullptr);
}

TEST_F(nxPricesLog, ListsTheCatalogueByName)
{
    nxVariableTickTableContainer::LogRegisteredEntries();
    std::vector<std::string> const messages = Messages();
    ASSERT_EQ(messages.size(), 150u + 787u);
    EXPECT_EQ(messages[0],
              "Registered Variable tick table. Name: BATS_lse1"); // not in the order of registration
    EXPECT_EQ(messages[1], "Entry #0. Upper bound: 0.0995, Delta: 0.0005");
    auto const euz1 = std::ranges::find(messages, "Registered Variable tick table. Name: CHIX_EUZ1");
    ASSERT_LT(euz1, messages.end() - 2);
    EXPECT_EQ(euz1[1], "Entry #0. Upper bound: 9.999, Delta: 0.001");
    EXPECT_EQ(euz1[2], "Entry #1. Upper bound: NONE, Delta: 0.005");
    EXPECT_EQ(std::ranges::count(Levels(), NX_INF), 937);
}

TEST_F(nxPricesLog, TellsOfALookupThatRunsOffTheTable)
{
    nxVariableTickTable const empty;
    nxDecimal price("2.50", '.');
    empty.Increment(price);
    empty.Decrement(price);
    empty.RoundToValidTick(nxRoundingMethodEnum(NX_ROUNDING_METHOD_UP), price);
    (void)empty.GetTickIncrement(price); // silent
    EXPECT_EQ(Messages(), std::vector<std::string>(3, "Fatal error in variable tick table"));
    EXPECT_EQ(Levels(), std::vector<unsigned int>(3, NX_FTL));
    EXPECT_EQ(price.GetAsString('.'), "3");
}
