// What the words of products, their markets and the calendar tell of themselves.

#include "core/numbers/nxDecimal.h"
#include "core/vocabulary/nxVocabulary.h"
#include "tests/vocabulary/nxWordsTest.h"

#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <string>

namespace
{
template <typename Enumeration>
Enumeration Make(unsigned int number)
{
    return Enumeration(static_cast<nxEnumValue>(number));
}
} // namespace

TEST(nxProductTypeEnumCode, GoesThereAndBack)
{
    constexpr char const* codes[] = {"W", "FWD", "NDF", "E", "F", "O", "S", "C", "B"};
    for (unsigned int number = 78; number <= 86; ++number)
    {
        std::string const code = codes[number - 78];
        EXPECT_EQ(Make<nxProductTypeEnum>(number).GetAsCode(), code);
        EXPECT_EQ(nxProductTypeEnum::GetValueFromCode(code), number);
        nxProductTypeEnum type;
        EXPECT_TRUE(type.SetFromCode(code).IsOK());
        EXPECT_EQ(type.GetValue(), number);
    }
    EXPECT_EQ(nxProductTypeEnum().GetAsCode(), "*");
    EXPECT_EQ(nxProductTypeEnum(NX_NO_CHANGE).GetAsCode(), "*");
    for (char const* const wrong : {"*", "", "f", "FW", "FWDS", "A"})
    {
        EXPECT_EQ(nxProductTypeEnum::GetValueFromCode(wrong), NX_UNDEFINED) << wrong;
        nxProductTypeEnum type(NX_BOND);
        EXPECT_EQ(type.SetFromCode(wrong), NX_ERR_INVALID_PARAMETER) << wrong;
        EXPECT_EQ(type, NX_BOND) << wrong;
    }
}

TEST(nxProductTypeEnumID, IsReadByItsFirstCharacter)
{
    struct Row
    {
        char const* id;
        nxEnumValue type;
    };
    constexpr Row rows[] = {
        {"F.XYZ", NX_FUTURE}, {"FWD1", NX_FUTURE},    {"NDF1", NX_UNDEFINED}, {"OX", NX_OPTION},
        {"BB", NX_BOND},      {"X", NX_UNDEFINED},    {"F", NX_UNDEFINED},    {"", NX_UNDEFINED},
        {"AB", NX_UNDEFINED}, {"AF.X", NX_UNDEFINED},
    };
    for (Row const& row : rows)
        EXPECT_EQ(nxProductTypeEnum::GetValueFromID(row.id), row.type) << row.id;
}

TEST(nxProductIDFieldEnumIndex, CountsFromZeroAndFailsForUndefinedOnly)
{
    unsigned int field = 77;
    EXPECT_FALSE(nxProductIDFieldEnum().GetFieldAsU32(field));
    EXPECT_EQ(field, 77u);
    EXPECT_TRUE(nxProductIDFieldEnum(NX_PRODUCT_TYPE).GetFieldAsU32(field));
    EXPECT_EQ(field, 0u);
    EXPECT_TRUE(nxProductIDFieldEnum(NX_WARRANT_NAME).GetFieldAsU32(field));
    EXPECT_EQ(field, 10u);
    EXPECT_TRUE(nxProductIDFieldEnum(NX_NO_CHANGE).GetFieldAsU32(field));
    EXPECT_EQ(field, 4294966797u);
}

TEST(nxProductWords, AreClassifiedRowByRow)
{
    EXPECT_EQ(WhereTrue(&nxProductNamingMethodEnum::RequiresProductDefinition), Span(15902, 15904));
    Numbers volStrategies = Span(5533, 5548);
    volStrategies.insert(volStrategies.begin(), 5527);
    volStrategies.push_back(5553);
    EXPECT_EQ(WhereTrue(&nxStrategyTypeEnum::IsVolStrategy), volStrategies);
    EXPECT_EQ(WhereTrue(&nxTickDataPeriodEnum::IsActualScheduleBased), Span(12316, 12318));
    EXPECT_EQ(WhereTrue(&nxTickDataPeriodEnum::IsVolumeBased), Span(12310, 12314));
}

TEST(nxCallPutEnumCode, SurvivesARefusedCharacter)
{
    nxCallPutEnum right;
    EXPECT_EQ(right.GetAsSingleCharacterCode(), '*');
    EXPECT_TRUE(right.SetFromSingleCharacterCode('C').IsOK());
    EXPECT_EQ(right.GetAsSingleCharacterCode(), 'C');
    EXPECT_TRUE(right.SetFromSingleCharacterCode('P').IsOK());
    EXPECT_EQ(right.SetFromSingleCharacterCode('p'), NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(right.GetAsSingleCharacterCode(), 'P');
}

TEST(nxMonthEnumNumber, IsCheckedOnTheWayInOnly)
{
    nxMonthEnum month(NX_NO_CHANGE);
    for (unsigned int const wrong : {0u, 13u, 4294967295u})
        EXPECT_FALSE(month.SetFromMonthNumber(wrong));
    EXPECT_TRUE(month.IsNoChange());
    for (unsigned int number = 1; number <= 12; ++number)
    {
        EXPECT_TRUE(month.SetFromMonthNumber(number));
        EXPECT_EQ(month.GetValue(), 220 + number);
        EXPECT_EQ(month.GetAsMonthNumber(), number);
    }
    EXPECT_EQ(nxMonthEnum().GetAsMonthNumber(), 4294967076u);
}

TEST(nxMonthEnumName, IsThreeLettersOnTheWayInOnly)
{
    std::map<std::string, unsigned int> const names = {
        {"JAN", 1}, {"FEB", 2}, {"MAR", 3}, {"APR", 4},  {"MAY", 5},  {"JUN", 6},
        {"JUL", 7}, {"AUG", 8}, {"SEP", 9}, {"OCT", 10}, {"NOV", 11}, {"DEC", 12},
    };
    EXPECT_EQ(nxMonthEnum::GetThreeDigitNameMap(), names);
    nxMonthEnum month;
    month.SetFrom3DigitString("SEP");
    EXPECT_EQ(month, NX_SEPTEMBER);
    EXPECT_EQ(month.GetAs3DigitString(), "SEPTEMBER");
    for (char const* const wrong : {"sep", "SEPT", "SEPTEMBER", ""})
    {
        month = NX_MAY;
        month.SetFrom3DigitString(wrong);
        EXPECT_TRUE(month.IsUndefined()) << wrong;
    }
}

TEST(nxDayOfWeekEnumNumber, RunsFromSunday)
{
    nxDayOfWeekEnum day;
    for (int number = 0; number <= 6; ++number)
    {
        day.SetFromDayOfWeekNumber(number);
        EXPECT_EQ(day.GetValue(), 13201u + static_cast<unsigned int>(number));
    }
    for (int const wrong : {-1, 7, -2147483647 - 1, 2147483647})
    {
        day = NX_DAY_OF_WEEK_FRIDAY;
        day.SetFromDayOfWeekNumber(wrong);
        EXPECT_TRUE(day.IsUndefined()) << wrong;
    }
}

TEST(nxDayOfWeekEnumDistance, GoesForward)
{
    for (unsigned int from = 0; from < 7; ++from)
    {
        for (unsigned int distance = 0; distance < 7; ++distance)
        {
            unsigned int days = 99;
            auto const day = Make<nxDayOfWeekEnum>(13201 + from);
            auto const target = Make<nxDayOfWeekEnum>(13201 + (from + distance) % 7);
            EXPECT_TRUE(day.GetDaysUntil(target, days).IsOK());
            EXPECT_EQ(days, distance);
        }
    }
    nxDayOfWeekEnum const friday(NX_DAY_OF_WEEK_FRIDAY);
    for (nxEnumValue const wrong : {NX_UNDEFINED, NX_NO_CHANGE})
    {
        unsigned int days = 99;
        EXPECT_EQ(friday.GetDaysUntil(wrong, days), NX_ERR_INVALID_PARAMETER);
        EXPECT_EQ(nxDayOfWeekEnum(wrong).GetDaysUntil(friday, days), NX_ERR_INVALID_PARAMETER);
        EXPECT_EQ(days, 99u);
    }
}

TEST(nxTradingSessionTypeEnumFromString, JoinsThePrefix)
{
    EXPECT_EQ(nxTradingSessionTypeEnum::CreateFromString("DAY_2"), NX_TRADING_SESSION_TYPE_DAY_2);
    EXPECT_TRUE(nxTradingSessionTypeEnum::CreateFromString("DAY2").IsUndefined()); // the text
    EXPECT_TRUE(nxTradingSessionTypeEnum::CreateFromString("").IsUndefined());
}

TEST(nxTickDataPeriodEnumSubject, IsTheTokenWhereThereIsNoWord)
{
    std::map<unsigned int, std::string> const words = {
        {12301, "SEC"},          {12302, "MIN"},          {12303, "5MIN"},        {12304, "15MIN"},
        {12305, "30MIN"},        {12306, "HOUR"},         {12307, "SESSION"},     {12308, "10MIN"},
        {12310, "100VOL"},       {12311, "1000VOL"},      {12312, "10000VOL"},    {12313, "100000VOL"},
        {12316, "10MIN ACTUAL"}, {12317, "30MIN ACTUAL"}, {12318, "HOUR ACTUAL"},
    };
    for (unsigned int number = 12300; number <= 12319; ++number)
    {
        auto const period = Make<nxTickDataPeriodEnum>(number);
        auto const word = words.find(number);
        EXPECT_EQ(period.GetSubscriptionSubjectDescription(),
                  word == words.end() ? period.GetShortDescription() : word->second);
    }
}

TEST(nxPriceFormatEnumStep, IsExactAtItsPlaces)
{
    struct Row
    {
        unsigned int format;
        long long value;
        unsigned char places;
    };
    constexpr Row rows[] = {
        {4501, 1, 2},       {4502, 1, 0},      {4503, 5, 1},      {4504, 25, 2},         {4505, 25, 2},
        {4506, 125, 3},     {4507, 10, 2},     {4508, 625, 4},    {4509, 5, 2},          {4510, 3125, 5},
        {4511, 25, 3},      {4512, 15625, 6},  {4513, 1, 2},      {4514, 15625, 6},      {4515, 78125, 7},
        {4516, 78125, 7},   {4517, 5, 3},      {4518, 1, 2},      {4519, 1, 3},          {4520, 31250, 7},
        {4521, 15625, 6},   {4522, 78125, 7},  {4523, 25, 4},     {4524, 833333333, 10}, {4525, 390625, 8},
        {4526, 1953125, 9}, {4527, 390625, 8}, {4528, 390625, 8},
    };
    EXPECT_EQ(std::size(rows), 28u);
    for (Row const& row : rows)
    {
        nxDecimal step(nxNullInitalizer{});
        Make<nxPriceFormatEnum>(row.format).GetDefaultNumericValue(step);
        EXPECT_TRUE(step.IsValid()) << row.format;
        EXPECT_EQ(step.GetValue(), row.value) << row.format;
        EXPECT_EQ(step.GetDecimalPlaces(), row.places) << row.format;
    }
    for (unsigned int const other : {0u, 2u})
    {
        nxDecimal step(1, 2);
        Make<nxPriceFormatEnum>(other).GetDefaultNumericValue(step);
        EXPECT_TRUE(step.IsNull());
    }
}

TEST(nxProductStateBitMaskPhases, AreToldFromTheBits)
{
    constexpr unsigned int preOpen = 0x1;
    constexpr unsigned int open = 0x2;
    constexpr unsigned int preClosed = 0x4;
    constexpr unsigned int closeAuction = 0x800000;
    for (unsigned int const others : {0x0u, 0x8u, 0x3F7FFFF8u})
    {
        for (unsigned int phases = 0; phases < 16; ++phases)
        {
            bool const isPreOpen = (phases & 1) != 0;
            bool const isOpen = (phases & 2) != 0;
            bool const isPreClosed = (phases & 4) != 0;
            bool const isCloseAuction = (phases & 8) != 0;
            nxProductStateBitMask const state(others | (isPreOpen ? preOpen : 0) | (isOpen ? open : 0) |
                                              (isPreClosed ? preClosed : 0) |
                                              (isCloseAuction ? closeAuction : 0));
            bool const isAuction = isPreOpen || isPreClosed || isCloseAuction;
            EXPECT_EQ(state.IsAuction(), isAuction);
            EXPECT_EQ(state.IsMarketOpenForAuctionMode(), isAuction || isOpen);
            EXPECT_EQ(state.IsMarketOpenForTrading(), isOpen && !isPreClosed && !isCloseAuction);
            EXPECT_EQ(state.IsMarketOpenForOrderManagement(), isPreOpen || isOpen);
            EXPECT_EQ(state.IsMarketOpen(), isPreOpen || isOpen);
        }
    }
}

TEST(nxProductStateBitMaskWord, HasSynonymsAndKnowsNoCase)
{
    struct Row
    {
        char const* word;
        unsigned int state;
    };
    constexpr Row rows[] = {
        {"PREOPEN", 0x1},
        {"PREOPENING", 0x1},
        {"PRE_TRADING", 0x1},
        {"OPEN", 0x2},
        {"CONTINUOUS_TRADING", 0x2},
        {"NORMAL", 0x2},
        {"TRADING", 0x2},
        {"RET_TRADING", 0x2},
        {"PRECLOSED", 0x4},
        {"CLOSED", 0x8},
        {"HOLIDAY", 0x8},
        {"INACTIVE", 0x8},
        {"NO_CANCEL", 0x10},
        {"PRICE_LIMITS_ENABLED", 0x20},
        {"PRICE_FAST", 0x40},
        {"START_FAST", 0x40},
        {"RESTRICTED_OPEN", 0x80},
        {"UNAVAILABLE", 0x100},
        {"START_OF_CONSULTATION", 0x200},
        {"STRESSED", 0x400},
        {"INTERVENTION_BEFORE_OPENING", 0x800},
        {"MINI_BATCH", 0x1000},
        {"SURVEILLANCE_INTERVENTION", 0x2000},
        {"END_OF_CONSULTATION", 0x4000},
        {"FORBIDDEN", 0x8000},
        {"INTERRUPTED", 0x10000},
        {"OPENING", 0x20000},
        {"AUTHORIZED", 0x40000},
        {"RESERVED", 0x80000},
        {"SUSPENDED", 0x100000},
        {"FROZEN", 0x200000},
        {"FREEZE", 0x200000},
        {"TRADING_HALT", 0x400000},
        {"CLOSE_AUCTION", 0x800000},
        {"HOLD", 0x1000000},
        {"NETTING", 0x2000000},
        {"EXPIRED", 0x4000000},
        {"RESTART_TRADING", 0x8000000},
        {"INTRADAY_AUCTION", 0x10000000},
        {"EXPIRING", 0x20000000},
    };
    EXPECT_EQ(std::size(rows), 40u);
    for (Row const& row : rows)
    {
        nxProductStateBitMask state(0x3);
        std::string word = row.word;
        EXPECT_TRUE(nxProductStateBitMask::GetStateBitMaskValueForTokenString(word, state)) << word;
        EXPECT_EQ(state.GetValue(), row.state) << word;

        for (char& letter : word)
            letter = static_cast<char>(std::tolower(letter));
        state.Clear();
        EXPECT_TRUE(nxProductStateBitMask::GetStateBitMaskValueForTokenString(word, state)) << word;
        EXPECT_EQ(state.GetValue(), row.state) << word;
    }
    for (char const* const wrong : {"Nope", "", "OPEN ", "FAST", "HALT", "PRICE_LIMITS"})
    {
        nxProductStateBitMask state(0x3);
        EXPECT_FALSE(nxProductStateBitMask::GetStateBitMaskValueForTokenString(wrong, state)) << wrong;
        EXPECT_EQ(state.GetValue(), 0x3u);
    }
}
