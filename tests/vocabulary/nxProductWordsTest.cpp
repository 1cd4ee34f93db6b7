// What the words of products, their markets and the calendar tell of themselves.

#include "core/numbers/nxDecimal.h"
#include "core/vocabulary/nxVocabulary.h"
#include "tests/vocabulary/nxWordsTest.h"

#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <string>
#include <tuple>

TEST(nxProductWords, AreClassifiedRowByRow)
{
    EXPECT_EQ(WhereTrue(&nxProductNamingMethodEnum::RequiresProductDefinition), "15902-15904");
    EXPECT_EQ(WhereTrue(&nxStrategyTypeEnum::IsVolStrategy), "5527 5533-5548 5553");
    EXPECT_EQ(WhereTrue(&nxTickDataPeriodEnum::IsActualScheduleBased), "12316-12318");
    EXPECT_EQ(WhereTrue(&nxTickDataPeriodEnum::IsVolumeBased), "12310-12314");
    EXPECT_EQ(Words(&nxTickDataPeriodEnum::GetSubscriptionSubjectDescription),
              "0=UNDEFINED 2=NO_CHANGE 12301=SEC 12302=MIN 12303=5MIN 12304=15MIN 12305=30MIN 12306=HOUR "
              "12307=SESSION 12308=10MIN " +
                  ("12309=" + Make<nxTickDataPeriodEnum>(12309).GetShortDescription()) +
                  " 12310=100VOL 12311=1000VOL 12312=10000VOL 12313=100000VOL 12314=" +
                  Make<nxTickDataPeriodEnum>(12314).GetShortDescription() +
                  " 12315=" + Make<nxTickDataPeriodEnum>(12315).GetShortDescription() +
                  " 12316=10MIN ACTUAL 12317=30MIN ACTUAL 12318=HOUR ACTUAL");
    EXPECT_EQ(nxTradingSessionTypeEnum::CreateFromString("DAY_2"), NX_TRADING_SESSION_TYPE_DAY_2);
    EXPECT_TRUE(nxTradingSessionTypeEnum::CreateFromString("DAY2").IsUndefined()); // the text
    EXPECT_TRUE(nxTradingSessionTypeEnum::CreateFromString("").IsUndefined());
}

TEST(nxProductTypeEnum, CodesGoThereAndBack)
{
    EXPECT_EQ(Words(&nxProductTypeEnum::GetAsCode),
              "0=* 2=* 78=W 79=FWD 80=NDF 81=E 82=F 83=O 84=S 85=C 86=B");
    for (unsigned int number = 78; number <= 86; ++number)
    {
        std::string const code = Make<nxProductTypeEnum>(number).GetAsCode();
        EXPECT_EQ(nxProductTypeEnum::GetValueFromCode(code), number);
        nxProductTypeEnum type;
        EXPECT_TRUE(type.SetFromCode(code).IsOK());
        EXPECT_EQ(type.GetValue(), number);
    }
    for (char const* const wrong : {"*", "", "f", "FW", "FWDS", "A"})
    {
        EXPECT_EQ(nxProductTypeEnum::GetValueFromCode(wrong), NX_UNDEFINED) << wrong;
        nxProductTypeEnum type(NX_BOND);
        EXPECT_EQ(type.SetFromCode(wrong), NX_ERR_INVALID_PARAMETER) << wrong;
        EXPECT_EQ(type, NX_BOND) << wrong;
    }
    // An ID is read by its first character.
    std::map<std::string, nxEnumValue> const ids = {
        {"F.XYZ", NX_FUTURE}, {"FWD1", NX_FUTURE},   {"NDF1", NX_UNDEFINED}, {"OX", NX_OPTION},
        {"BB", NX_BOND},      {"X", NX_UNDEFINED},   {"F", NX_UNDEFINED},    {"", NX_UNDEFINED},
        {"AB", NX_UNDEFINED}, {"AF.X", NX_UNDEFINED}};
    for (auto const& [id, type] : ids)
        EXPECT_EQ(nxProductTypeEnum::GetValueFromID(id), type) << id;
}

TEST(nxProductIDFieldEnum, IndexCountsFromZeroAndFailsForUndefinedOnly)
{
    unsigned int field = 77;
    EXPECT_FALSE(nxProductIDFieldEnum().GetFieldAsU32(field));
    EXPECT_EQ(field, 77u);
    std::map<nxEnumValue, unsigned int> const indices = {
        {NX_PRODUCT_TYPE, 0}, {NX_WARRANT_NAME, 10}, {NX_NO_CHANGE, 4294966797u}};
    for (auto const& [value, index] : indices)
    {
        EXPECT_TRUE(nxProductIDFieldEnum(value).GetFieldAsU32(field));
        EXPECT_EQ(field, index);
    }
}

TEST(nxCallPutEnum, CodeSurvivesARefusedCharacter)
{
    nxCallPutEnum right;
    EXPECT_EQ(right.GetAsSingleCharacterCode(), '*');
    for (char const code : {'C', 'P'})
    {
        EXPECT_TRUE(right.SetFromSingleCharacterCode(code).IsOK());
        EXPECT_EQ(right.SetFromSingleCharacterCode('p'), NX_ERR_INVALID_PARAMETER);
        EXPECT_EQ(right.GetAsSingleCharacterCode(), code);
    }
}

TEST(nxMonthEnum, NumberIsCheckedAndNameCutOnTheWayInOnly)
{
    nxMonthEnum month(NX_NO_CHANGE);
    for (unsigned int const wrong : {0u, 13u, 4294967295u})
        EXPECT_FALSE(month.SetFromMonthNumber(wrong));
    EXPECT_TRUE(month.IsNoChange());
    EXPECT_EQ(nxMonthEnum().GetAsMonthNumber(), 4294967076u);

    constexpr char const* names[] = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                     "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
    EXPECT_EQ(nxMonthEnum::GetThreeDigitNameMap().size(), 12u);
    for (unsigned int number = 1; number <= 12; ++number)
    {
        EXPECT_TRUE(month.SetFromMonthNumber(number));
        EXPECT_EQ(month.GetValue(), 220 + number);
        EXPECT_EQ(month.GetAsMonthNumber(), number);
        EXPECT_EQ(nxMonthEnum::GetThreeDigitNameMap().at(names[number - 1]), number);
        month.Clear();
        month.SetFrom3DigitString(names[number - 1]);
        EXPECT_EQ(month.GetValue(), 220 + number);
    }
    EXPECT_EQ(month.GetAs3DigitString(), "DECEMBER");
    for (char const* const wrong : {"sep", "SEPT", "SEPTEMBER", ""})
    {
        month = NX_MAY;
        month.SetFrom3DigitString(wrong);
        EXPECT_TRUE(month.IsUndefined()) << wrong;
    }
}

TEST(nxDayOfWeekEnum, RunsFromSundayAndForward)
{
    nxDayOfWeekEnum day;
    for (int const wrong : {-1, 7, -2147483647 - 1, 2147483647})
    {
        day = NX_DAY_OF_WEEK_FRIDAY;
        day.SetFromDayOfWeekNumber(wrong);
        EXPECT_TRUE(day.IsUndefined()) << wrong;
    }
    unsigned int days = 99;
    for (int from = 0; from < 7; ++from)
    {
        day.SetFromDayOfWeekNumber(from);
        EXPECT_EQ(day.GetValue(), 13201u + static_cast<unsigned int>(from));
        for (unsigned int distance = 0; distance < 7; ++distance)
        {
            auto const target =
                Make<nxDayOfWeekEnum>(13201 + (static_cast<unsigned int>(from) + distance) % 7);
            EXPECT_TRUE(day.GetDaysUntil(target, days).IsOK());
            EXPECT_EQ(days, distance);
        }
    }
    days = 99;
    for (nxEnumValue const wrong : {NX_UNDEFINED, NX_NO_CHANGE})
    {
        EXPECT_EQ(day.GetDaysUntil(wrong, days), NX_ERR_INVALID_PARAMETER);
        EXPECT_EQ(nxDayOfWeekEnum(wrong).GetDaysUntil(day, days), NX_ERR_INVALID_PARAMETER);
        EXPECT_EQ(days, 99u);
    }
}

TEST(nxPriceFormatEnum, StepIsExactAtItsPlaces)
{
    // Value and places of each format from 4501 on.
    constexpr std::pair<long long, unsigned char> steps[] = {
        {1, 2},     {1, 0},     {5, 1},          {25, 2},     {25, 2},      {125, 3},    {10, 2},
        {625, 4},   {5, 2},     {3125, 5},       {25, 3},     {15625, 6},   {1, 2},      {15625, 6},
        {78125, 7}, {78125, 7}, {5, 3},          {1, 2},      {1, 3},       {31250, 7},  {15625, 6},
        {78125, 7}, {25, 4},    {833333333, 10}, {390625, 8}, {1953125, 9}, {390625, 8}, {390625, 8}};
    EXPECT_EQ(std::size(steps), 28u);
    ForEachNumber<nxPriceFormatEnum>(
        [&](unsigned int format)
        {
            nxDecimal step(1, 2);
            Make<nxPriceFormatEnum>(format).GetDefaultNumericValue(step);
            EXPECT_EQ(step.IsNull(), format < 4501 || format > 4528) << format;
            if (!step.IsNull())
            {
                EXPECT_EQ(std::pair(step.GetValue(), step.GetDecimalPlaces()), steps[format - 4501])
                    << format;
            }
        });
}

TEST(nxProductStateBitMask, PhasesAreToldFromTheBits)
{
    for (unsigned int const others : {0x0u, 0x8u, 0x3F7FFFF8u})
    {
        for (unsigned int phases = 0; phases < 16; ++phases)
        {
            bool const isPreOpen = (phases & 1) != 0;
            bool const isOpen = (phases & 2) != 0;
            bool const isPreClosed = (phases & 4) != 0;
            bool const isCloseAuction = (phases & 8) != 0;
            nxProductStateBitMask const state(others | (phases & 7) | (isCloseAuction ? 0x800000 : 0));
            bool const isAuction = isPreOpen || isPreClosed || isCloseAuction;
            EXPECT_EQ(state.IsAuction(), isAuction);
            EXPECT_EQ(state.IsMarketOpenForAuctionMode(), isAuction || isOpen);
            EXPECT_EQ(state.IsMarketOpenForTrading(), isOpen && !isPreClosed && !isCloseAuction);
            EXPECT_EQ(state.IsMarketOpenForOrderManagement(), isPreOpen || isOpen);
            EXPECT_EQ(state.IsMarketOpen(), isPreOpen || isOpen);
        }
    }
}

TEST(nxProductStateBitMask, WordsHaveSynonymsAndKnowNoCase)
{
    // The words that share a state, and the first and last bit that a word names.
    std::map<std::string, unsigned int> const states = {
        {"PREOPEN", 0x1},     {"PREOPENING", 0x1},      {"PRE_TRADING", 0x1}, {"OPEN", 0x2},
        {"NORMAL", 0x2},      {"RET_TRADING", 0x2},     {"CLOSED", 0x8},      {"HOLIDAY", 0x8},
        {"INACTIVE", 0x8},    {"PRICE_FAST", 0x40},     {"START_FAST", 0x40}, {"FROZEN", 0x200000},
        {"FREEZE", 0x200000}, {"EXPIRING", 0x20000000},
    };
    for (auto const& [name, bits] : states)
    {
        std::string word = name;
        nxProductStateBitMask state(0x3);
        EXPECT_TRUE(nxProductStateBitMask::GetStateBitMaskValueForTokenString(word, state)) << word;
        EXPECT_EQ(state.GetValue(), bits) << word;
        for (char& letter : word)
            letter = static_cast<char>(std::tolower(letter));
        state.Clear();
        EXPECT_TRUE(nxProductStateBitMask::GetStateBitMaskValueForTokenString(word, state)) << word;
        EXPECT_EQ(state.GetValue(), bits) << word;
    }
    for (char const* const wrong : {"Nope", "", "OPEN ", "FAST", "HALT", "PRICE_LIMITS"})
    {
        nxProductStateBitMask state(0x3);
        EXPECT_FALSE(nxProductStateBitMask::GetStateBitMaskValueForTokenString(wrong, state)) << wrong;
        EXPECT_EQ(state.GetValue(), 0x3u);
    }
}
