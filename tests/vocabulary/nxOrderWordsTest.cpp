// What the words of orders, executions and trades tell of themselves.

#include "core/vocabulary/nxVocabulary.h"
#include "tests/vocabulary/nxWordsTest.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
template <typename Enumeration>
Enumeration Make(unsigned int number)
{
    return Enumeration(static_cast<nxEnumValue>(number));
}
} // namespace

TEST(nxOrderWords, AreClassifiedRowByRow)
{
    EXPECT_EQ(WhereTrue(&nxOrderTypeEnum::IsWholesaleTrade), Span(1003, 1010));
    Numbers const working = {1101, 1102, 1103, 1107, 1110};
    EXPECT_EQ(WhereTrue(&nxOrderStatusEnum::IsWorkingOrder), working);
    EXPECT_EQ(WhereTrue(&nxOrderStatusEnum::IsWorkingOrderForGUIs), working);
    EXPECT_EQ(WhereTrue(&nxExecutionRestrictionEnum::IsVariantOfStop), (Numbers{1053, 1055}));
    EXPECT_EQ(WhereTrue(&nxSyntheticOrderTypeEnum::IsVariantOfTalvex), (Numbers{5915, 5916}));
    EXPECT_EQ(WhereTrue(&nxSyntheticChildOrderTypeEnum::IsSpreadWorkingChildOrder), (Numbers{7003}));
    EXPECT_EQ(WhereTrue(&nxSyntheticChildOrderTypeEnum::IsSpreadHedgeChildOrder), (Numbers{7001, 7002}));
}

TEST(nxSyntheticOrderTypeEnumTraits, HoldRowByRow)
{
    using Type = nxSyntheticOrderTypeEnum;
    EXPECT_EQ(
        WhereTrue(&Type::CanBeParentOfSyntheticSpreadOrders),
        (Numbers{5902, 5903, 5906, 5907, 5909, 5910, 5911, 5912, 5914, 5919, 5921, 5922, 5923, 5925, 5927}));
    EXPECT_EQ(WhereTrue(&Type::CanBeShattered), (Numbers{5902, 5903, 5904, 5905, 5906, 5909, 5910, 5911, 5912,
                                                         5914, 5915, 5919, 5922, 5923, 5927}));
    EXPECT_EQ(WhereTrue(&Type::RequiresGroupSubmission), (Numbers{5902, 5906, 5910}));
    EXPECT_EQ(WhereTrue(&Type::CanParentOrdersBeShownOnPricingScreens),
              (Numbers{0,    2,    5901, 5902, 5903, 5904, 5905, 5906, 5907, 5908, 5909, 5910, 5911, 5912,
                       5913, 5914, 5916, 5917, 5918, 5919, 5920, 5922, 5923, 5924, 5925, 5926, 5927}));
    EXPECT_EQ(WhereTrue(&Type::CanChildOrdersBeShownOnPricingScreens),
              (Numbers{5904, 5915, 5920, 5921, 5927}));
}

TEST(nxSyntheticOrderTypeEnumActions, PassOnlyTheShatterThrough)
{
    EXPECT_TRUE(Make<nxSyntheticOrderTypeEnum>(5902).IsSupportedPassThroughAction(NX_FUNCTION_SHATTER_ORDER));
    EXPECT_FALSE(
        Make<nxSyntheticOrderTypeEnum>(5901).IsSupportedPassThroughAction(NX_FUNCTION_SHATTER_ORDER));
    EXPECT_FALSE(Make<nxSyntheticOrderTypeEnum>(5902).IsSupportedPassThroughAction(NX_FUNCTION_SUBMIT_ORDER));
    EXPECT_FALSE(nxSyntheticOrderTypeEnum().IsSupportedPassThroughAction(NX_FUNCTION_SHATTER_ORDER));
}

TEST(nxSyntheticOrderTypeEnumSuffix, IsBehindThePrefixInAnySpelling)
{
    struct Row
    {
        unsigned int number;
        bool isFound;
        char const* suffix;
    };
    constexpr Row rows[] = {
        {5901, true, "SYNTHETIC"},   {5915, true, "TALVEX"}, {5916, true, "SIMPLE_TLV"},
        {5919, true, "ON_PRE_OPEN"}, {0, false, "before"},   {2, false, "before"},
    };
    for (Row const& row : rows)
    {
        std::string suffix = "before";
        EXPECT_EQ(Make<nxSyntheticOrderTypeEnum>(row.number).GetShortDescriptionSuffix(suffix), row.isFound);
        EXPECT_EQ(suffix, row.suffix);
    }
}

TEST(nxSyntheticChildOrderTypeEnumAmendments, AreForThreeChildrenOfTwoParents)
{
    for (unsigned int const parent : Span(5900, 5928))
    {
        for (unsigned int const child : Span(7000, 7012))
        {
            bool const isSupported =
                (parent == 5904 || parent == 5915) && (child == 7001 || child == 7002 || child == 7008);
            EXPECT_EQ(Make<nxSyntheticChildOrderTypeEnum>(child).SupportsUserAmendments(
                          Make<nxSyntheticOrderTypeEnum>(parent)),
                      isSupported)
                << child << " of " << parent;
        }
    }
}

TEST(nxOrderWordsFromString, JoinThePrefixesOfTheirClass)
{
    EXPECT_EQ(nxOrderTypeEnum::CreateFromString("LIMIT"), NX_ORDER_TYPE_LIMIT);
    EXPECT_EQ(nxOrderTypeEnum::CreateFromString("EXCHANGE_FOR_SWAP"), NX_ORDER_TYPE_EXCHANGE_FOR_SWAP);
    for (char const* const word : {"", "limit", "LIMIT ", "NX_ORDER_TYPE_LIMIT", "GFD"})
        EXPECT_TRUE(nxOrderTypeEnum::CreateFromString(word).IsUndefined()) << word;

    EXPECT_EQ(nxTimeRestrictionEnum::CreateFromString("GFD"), NX_TIME_RESTRICTION_GFD);
    EXPECT_EQ(nxTimeRestrictionEnum::CreateFromString("ON_OPEN"), NX_TIME_RESTRICTION_ON_OPEN);
    EXPECT_EQ(nxTimeRestrictionEnum::CreateFromString("ON_OPEN_GTC"), NX_TIME_RES_ON_OPEN_GTC);
    EXPECT_TRUE(nxTimeRestrictionEnum::CreateFromString("gfd").IsUndefined());

    EXPECT_EQ(nxExecutionRestrictionEnum::CreateFromString("IOC"), NX_EXECUTION_RESTRICTION_IOC);
    EXPECT_EQ(nxExecutionRestrictionEnum::CreateFromString("TRAIL_STOP"), NX_EXEC_RESTRICTION_TRAIL_STOP);
    EXPECT_TRUE(nxExecutionRestrictionEnum::CreateFromString("TSTP").IsUndefined()); // a text, not a token
}

TEST(nxSyntheticStrategyLegCalculationPriceTypeEnumSuffix, KnowsLastByItself)
{
    struct Row
    {
        char const* word;
        bool isFound;
        unsigned int stored;
    };
    for (Row const& row : {Row{"LAST", true, 15701}, Row{"LAST_DEFAULT", true, 15701},
                           Row{"MID_PRICE", true, 15702}, Row{"last", false, 2}, Row{"", false, 2}})
    {
        nxSyntheticStrategyLegCalculationPriceTypeEnum type(NX_NO_CHANGE);
        EXPECT_EQ(type.SetFromShortDescriptionStringSuffix(row.word), row.isFound) << row.word;
        EXPECT_EQ(type.GetValue(), row.stored) << row.word;
    }
}

TEST(nxTradeTransactionTypeEnumMultiplier, IsTheSignOfThePosition)
{
    constexpr int multipliers[] = {0, 1, -1, 1, -1, 1, 0};
    for (unsigned int number = 1900; number <= 1906; ++number)
        EXPECT_EQ(Make<nxTradeTransactionTypeEnum>(number).GetMultiplier(), multipliers[number - 1900])
            << number;
    EXPECT_EQ(Make<nxTradeTransactionTypeEnum>(2).GetMultiplier(), 0);
}

TEST(nxOrderWordsCodes, AreEmptyForAnythingElse)
{
    EXPECT_EQ(nxOpenCloseEnum(NX_OPEN).GetAsCode(), "O");
    EXPECT_EQ(nxOpenCloseEnum(NX_CLOSE).GetAsCode(), "C");
    EXPECT_EQ(nxOpenCloseEnum(NX_CLOSE_TODAY).GetAsCode(), "T");
    EXPECT_EQ(nxOpenCloseEnum(NX_NO_CHANGE).GetAsCode(), "");
    EXPECT_EQ(Make<nxTradingCapacityEnum>(14401).GetMIFIDCode(), "DEAL");
    EXPECT_EQ(Make<nxTradingCapacityEnum>(14402).GetMIFIDCode(), "MTCH");
    EXPECT_EQ(Make<nxTradingCapacityEnum>(14403).GetMIFIDCode(), "AOTC");
    EXPECT_EQ(nxTradingCapacityEnum().GetMIFIDCode(), "");
}

TEST(nxMultiLegReportingTypeEnumFIX, GoesThereAndBackAndClearsOnFailure)
{
    for (unsigned int number = 14801; number <= 14803; ++number)
    {
        std::string code;
        EXPECT_TRUE(Make<nxMultiLegReportingTypeEnum>(number).GetAsFIXMultiLegReportingType(code).IsOK());
        EXPECT_EQ(code, std::to_string(number - 14800));
        nxMultiLegReportingTypeEnum back;
        EXPECT_TRUE(back.SetFromFIXMultiLegReportingType(code).IsOK());
        EXPECT_EQ(back.GetValue(), number);
    }
    std::string code = "before";
    EXPECT_EQ(nxMultiLegReportingTypeEnum(NX_NO_CHANGE).GetAsFIXMultiLegReportingType(code),
              NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(code, "");
    for (char const* const wrong : {"", "0", "4", "11", " 1"})
    {
        auto type = Make<nxMultiLegReportingTypeEnum>(14801);
        EXPECT_EQ(type.SetFromFIXMultiLegReportingType(wrong), NX_ERR_INVALID_PARAMETER) << wrong;
        EXPECT_TRUE(type.IsUndefined()) << wrong;
    }
}

TEST(nxPositionTypeEnumCode, IsClearedByAnUnknownCharacterWithoutAnError)
{
    nxPositionTypeEnum type;
    EXPECT_TRUE(type.SetFromSingleCharacterCode('R').IsOK());
    EXPECT_EQ(type, NX_POSITION_TYPE_REAL);
    EXPECT_EQ(type.GetAsSingleCharacterCode(), 'R');
    EXPECT_TRUE(type.SetFromSingleCharacterCode('U').IsOK());
    EXPECT_EQ(type.GetAsSingleCharacterCode(), 'U');
    EXPECT_TRUE(type.SetFromSingleCharacterCode('X').IsOK());
    EXPECT_TRUE(type.IsUndefined());
    EXPECT_EQ(type.GetAsSingleCharacterCode(), '*');
}
