// What the words of the screens tell of themselves.

#include "core/vocabulary/nxClickTradingActionsEnum.h"
#include "core/vocabulary/nxGridDateTimeFormatEnum.h"
#include "core/vocabulary/nxKeyboardModifierBitMask.h"
#include "core/vocabulary/nxWorkpaceGroupTypeEnum.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{
using Click = nxClickTradingActionsEnum;
using Numbers = std::vector<unsigned int>;

Numbers Clicks(bool (Click::*predicate)() const)
{
    Numbers numbers;
    for (unsigned int const number : {0u, 2u})
        if ((Click(static_cast<nxEnumValue>(number)).*predicate)())
            numbers.push_back(number);
    for (unsigned int number = 3001; number <= 3038; ++number)
        if ((Click(static_cast<nxEnumValue>(number)).*predicate)())
            numbers.push_back(number);
    return numbers;
}
} // namespace

TEST(nxClickTradingActionsEnum, EveryActionUsesOneVolume)
{
    EXPECT_EQ(Clicks(&Click::UsesSecondaryOrderVolume),
              (Numbers{3009, 3010, 3011, 3012, 3013, 3017, 3018, 3021, 3022}));
    EXPECT_EQ(Clicks(&Click::UsesThirdOrderVolume),
              (Numbers{3023, 3024, 3025, 3026, 3027, 3028, 3029, 3030}));
    EXPECT_EQ(Clicks(&Click::UsesFourthOrderVolume),
              (Numbers{3031, 3032, 3033, 3034, 3035, 3036, 3037, 3038}));
    EXPECT_EQ(Clicks(&Click::UsesPrimaryOrderVolume),
              (Numbers{0, 2, 3001, 3002, 3003, 3004, 3005, 3006, 3007, 3008, 3014, 3015, 3016, 3019, 3020}));
}

TEST(nxClickTradingActionsEnum, SingleActions)
{
    EXPECT_EQ(Clicks(&Click::IsClickJoinMarketAction), (Numbers{3001, 3009, 3023, 3031}));
    EXPECT_EQ(Clicks(&Click::IsClickTradeAction), (Numbers{3002, 3010, 3024, 3032}));
    EXPECT_EQ(Clicks(&Click::IsShowJoinMarketTicketAction), (Numbers{3004, 3011, 3025, 3033}));
    EXPECT_EQ(Clicks(&Click::IsShowTradeTicketAction), (Numbers{3008, 3013, 3026, 3034}));
    EXPECT_EQ(Clicks(&Click::IsShowAmendTicketAction), Numbers{3014});
    EXPECT_EQ(Clicks(&Click::IsClickDimeAction), (Numbers{3007, 3012}));
}

TEST(nxClickTradingActionsEnum, CombinedActionsAreNotSingleOnes)
{
    EXPECT_EQ(Clicks(&Click::IsCombinedClickJoinMarketOrPullAction), (Numbers{3015, 3017, 3027, 3035}));
    EXPECT_EQ(Clicks(&Click::IsCombinedJoinMarketTicketOrPullAction), (Numbers{3016, 3018, 3028, 3036}));
    EXPECT_EQ(Clicks(&Click::IsCombinedClickTradeOrPullAction), (Numbers{3019, 3021, 3029, 3037}));
    EXPECT_EQ(Clicks(&Click::IsCombinedTradeTicketOrPullAction), (Numbers{3020, 3022, 3030, 3038}));
}

TEST(nxGridDateTimeFormatEnum, TokenEndsInATab)
{
    nxGridDateTimeFormatEnum format(NX_GRID_DATE_TIME_FORMAT_TIME_ONLY);
    EXPECT_FALSE(format.SetFromString("NX_GRID_DATE_TIME_FORMAT_DATE_AND_TIME"));
    EXPECT_EQ(format, NX_GRID_DATE_TIME_FORMAT_TIME_ONLY);
    EXPECT_TRUE(format.SetFromString("NX_GRID_DATE_TIME_FORMAT_DATE_AND_TIME\t"));
    EXPECT_EQ(format.GetValue(), 14102u);
}

TEST(nxWorkpaceGroupTypeEnum, OnlyHomeAndLaptopHaveAPrefix)
{
    EXPECT_EQ(nxWorkpaceGroupTypeEnum(NX_WORKSPACE_GROUP_TYPE_HOME).GetDataInstancePrefix(), "Home_");
    EXPECT_EQ(nxWorkpaceGroupTypeEnum(NX_WORKSPACE_GROUP_TYPE_LAPTOP).GetDataInstancePrefix(), "Laptop_");
    EXPECT_EQ(nxWorkpaceGroupTypeEnum(NX_WORKSPACE_GROUP_TYPE_OFFICE).GetDataInstancePrefix(), "");
    EXPECT_EQ(nxWorkpaceGroupTypeEnum().GetDataInstancePrefix(), "");
}

TEST(nxKeyboardModifierBitMask, TellsTheKeysApart)
{
    for (unsigned int bits = 0; bits < 8; ++bits)
    {
        nxKeyboardModifierBitMask const keys(bits);
        EXPECT_EQ(keys.IsShiftKeyDown(), (bits & 1) != 0) << bits;
        EXPECT_EQ(keys.IsCtrlKeyDown(), (bits & 2) != 0) << bits;
        EXPECT_EQ(keys.IsAltKeyDown(), (bits & 4) != 0) << bits;
    }
}
