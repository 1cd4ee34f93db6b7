// What the ladders say in the log: the catalogue on request, and a lookup that runs off a table.
#include "core/prices/nxVariableTickTableContainer.h"
#include "tests/logging/nxRecordingLogDevice.h"

#include <algorithm>

namespace
{
class nxPricesLog : public nxRecordingTest
{
};
} // namespace

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
