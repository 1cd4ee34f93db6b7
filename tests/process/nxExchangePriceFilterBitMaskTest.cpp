// How a price gateway's filter is read from the environment.
#include "core/vocabulary/nxExchangePriceFilterBitMask.h"
#include "core/process/nxCmdLineArgs.h"

#include <gtest/gtest.h>

TEST(nxExchangePriceFilterBitMask, AddsTheBitsThatTheVariableNames)
{
    struct
    {
        char const* value;
        unsigned int bits;
    } const rows[] = {
        {"", 0},
        {"IMPLIEDS, BOGUS", 0x2},
        {" PREV_SETTLEMENTS\t,BLOCK_TRADES,\r\nIMPLIEDS ", 0x13},
        {"NEW_PRODUCTS,NEW_PRODUCTS,", 0x4},
        {"implieds", 0},
        {"SETTLEMENTS,,", 0x8},
        {"Settlements;IMPLIEDS", 0},
    };
    for (auto const& row : rows)
    {
        ASSERT_TRUE(nxCmdLineArgs::GetInstance().SetEnvValue("NX_TEST_FILTER", row.value));
        nxExchangePriceFilterBitMask empty;
        empty.ReadFromEnvValue("NX_TEST_FILTER");
        EXPECT_EQ(empty.GetValue(), row.bits) << row.value;
        nxExchangePriceFilterBitMask filled(0x100);
        filled.ReadFromEnvValue("NX_TEST_FILTER");
        EXPECT_EQ(filled.GetValue(), row.bits | 0x100) << row.value;
    }
    ASSERT_TRUE(nxCmdLineArgs::GetInstance().SetEnvValue("NX_TEST_FILTER", "IMPLIEDS"));
    nxExchangePriceFilterBitMask null;
    null.SetNull();
    null.ReadFromEnvValue("NX_TEST_FILTER");
    EXPECT_EQ(null.GetValue(), 0x2u);
}
