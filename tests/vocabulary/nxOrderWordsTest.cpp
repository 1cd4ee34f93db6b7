// What the words of orders, trades, accounts and limits tell of themselves.

#include "core/vocabulary/nxVocabulary.h"
#include "tests/vocabulary/nxWordsTest.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

TEST(nxOrderWords, AreClassifiedRowByRow)
{
    using Synthetic = nxSyntheticOrderTypeEnum;
    using Child = nxSyntheticChildOrderTypeEnum;
    EXPECT_EQ(WhereTrue(&nxOrderTypeEnum::IsWholesaleTrade), "1003-1010");
    EXPECT_EQ(WhereTrue(&nxOrderStatusEnum::IsWorkingOrder), "1101-1103 1107 1110");
    EXPECT_EQ(WhereTrue(&nxOrderStatusEnum::IsWorkingOrderForGUIs), "1101-1103 1107 1110");
    EXPECT_EQ(WhereTrue(&nxExecutionRestrictionEnum::IsVariantOfStop), "1053 1055");
    EXPECT_EQ(WhereTrue(&Child::IsSpreadWorkingChildOrder), "7003");
    EXPECT_EQ(WhereTrue(&Child::IsSpreadHedgeChildOrder), "7001-7002");
    EXPECT_EQ(WhereTrue(&Synthetic::IsVariantOfTalvex), "5915-5916");
    EXPECT_EQ(WhereTrue(&Synthetic::CanBeParentOfSyntheticSpreadOrders),
              "5902-5903 5906-5907 5909-5912 5914 5919 5921-5923 5925 5927");
    EXPECT_EQ(WhereTrue(&Synthetic::CanBeShattered), "5902-5906 5909-5912 5914-5915 5919 5922-5923 5927");
    EXPECT_EQ(WhereTrue(&Synthetic::RequiresGroupSubmission), "5902 5906 5910");
    EXPECT_EQ(WhereTrue(&Synthetic::CanParentOrdersBeShownOnPricingScreens),
              "0 2 5901-5914 5916-5920 5922-5927");
    EXPECT_EQ(WhereTrue(&Synthetic::CanChildOrdersBeShownOnPricingScreens), "5904 5915 5920-5921 5927");

    EXPECT_TRUE(Make<Synthetic>(5902).IsSupportedPassThroughAction(NX_FUNCTION_SHATTER_ORDER));
    EXPECT_FALSE(Make<Synthetic>(5901).IsSupportedPassThroughAction(NX_FUNCTION_SHATTER_ORDER));
    EXPECT_FALSE(Make<Synthetic>(5902).IsSupportedPassThroughAction(NX_FUNCTION_SUBMIT_ORDER));
    for (unsigned int parent = 5900; parent <= 5928; ++parent)
        for (unsigned int child = 7000; child <= 7012; ++child)
            EXPECT_EQ(Make<Child>(child).SupportsUserAmendments(Make<Synthetic>(parent)),
                      (parent == 5904 || parent == 5915) && (child == 7001 || child == 7002 || child == 7008))
                << child << " of " << parent;
}

TEST(nxOrderWords, HaveCodes)
{
    EXPECT_EQ(Words(&nxOpenCloseEnum::GetAsCode), "1061=O 1062=C 1063=T");
    EXPECT_EQ(Words(&nxTradingCapacityEnum::GetMIFIDCode), "14401=DEAL 14402=MTCH 14403=AOTC");
    EXPECT_EQ(Words(&nxTradeTransactionTypeEnum::GetMultiplier),
              "0=0 2=0 1901=1 1902=-1 1903=1 1904=-1 1905=1");

    nxPositionTypeEnum type;
    for (char const code : {'R', 'U'})
    {
        EXPECT_TRUE(type.SetFromSingleCharacterCode(code).IsOK());
        EXPECT_EQ(type.GetAsSingleCharacterCode(), code);
        EXPECT_EQ(type == NX_POSITION_TYPE_REAL, code == 'R');
    }
    EXPECT_TRUE(type.SetFromSingleCharacterCode('X').IsOK()); // cleared without an error
    EXPECT_TRUE(type.IsUndefined());
    EXPECT_EQ(type.GetAsSingleCharacterCode(), '*');
}

TEST(nxOrderWords, HaveSuffixes)
{
    using Row = std::tuple<unsigned int, bool, char const*>;
    for (auto const& [number, isFound, expected] :
         {Row{5901, true, "SYNTHETIC"}, Row{5915, true, "TALVEX"}, Row{5916, true, "SIMPLE_TLV"},
          Row{5919, true, "ON_PRE_OPEN"}, Row{0, false, "before"}, Row{2, false, "before"}})
    {
        std::string suffix = "before";
        EXPECT_EQ(Make<nxSyntheticOrderTypeEnum>(number).GetShortDescriptionSuffix(suffix), isFound);
        EXPECT_EQ(suffix, expected);
    }
    using Price = std::tuple<char const*, bool, unsigned int>;
    for (auto const& [word, isFound, stored] :
         {Price{"LAST", true, 15701}, Price{"LAST_DEFAULT", true, 15701}, Price{"MID_PRICE", true, 15702},
          Price{"last", false, 2}, Price{"", false, 2}})
    {
        nxSyntheticStrategyLegCalculationPriceTypeEnum type(NX_NO_CHANGE);
        EXPECT_EQ(type.SetFromShortDescriptionStringSuffix(word), isFound) << word;
        EXPECT_EQ(type.GetValue(), stored) << word;
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

TEST(nxMultiLegReportingTypeEnumFIX, GoesThereAndBackAndClearsOnFailure)
{
    std::string code;
    for (unsigned int number = 14801; number <= 14803; ++number)
    {
        EXPECT_TRUE(Make<nxMultiLegReportingTypeEnum>(number).GetAsFIXMultiLegReportingType(code).IsOK());
        EXPECT_EQ(code, std::to_string(number - 14800));
        nxMultiLegReportingTypeEnum back;
        EXPECT_TRUE(back.SetFromFIXMultiLegReportingType(code).IsOK());
        EXPECT_EQ(back.GetValue(), number);
    }
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

TEST(nxAccountWords, HaveWordsOfTheirOwn)
{
    EXPECT_EQ(Words(&nxAccountNodeStateEnum::GetAsLogString),
              "0=UNDEFINED 2=NO_CHANGE 2801=ACTIVE 2802=DELETED");
    EXPECT_EQ(Words(&nxUserNodeStateEnum::GetAsLogString),
              "0=UNDEFINED 2=NO_CHANGE 2851=ACTIVE 2852=DISABLED 2853=DELETED");
    EXPECT_EQ(Words(&nxDataActiveStatusEnum::GetIndexedMapTail),
              "0=.* 2=.* 7701=.STATUS_ACTIVE 7702=.STATUS_INACTIVE 7703=.*");
    EXPECT_EQ(Words(&nxPandLDataPeriodEnum::GetSubscriptionSubjectDescription),
              "0=UNDEFINED 2=NO_CHANGE 15001=MIN 15002=5MIN 15003=15MIN 15004=HOUR 15005=DAILY 15006=WEEK "
              "15007=NX_PANDL_DATA_PERIOD_CUSTOM");

    // A constructor refuses such a number; only the copy of a wider class brings it here.
    nxWiderEnum<nxUserNodeStateEnum> user;
    user = NX_BUY;
    EXPECT_EQ(nxUserNodeStateEnum(user).GetAsLogString(), "NOT_RECOGNISED");
    nxWiderEnum<nxAccountNodeStateEnum> account;
    account = NX_BUY;
    EXPECT_EQ(nxAccountNodeStateEnum(account).GetAsLogString(), "NOT_RECOGNISED");
}

TEST(nxLimitAccountStateEnum, RanksItsStatesAndKeepsFromTradingByAnError)
{
    using State = nxLimitAccountStateEnum;
    constexpr unsigned int errors[] = {1008006, 0, 0, 0, 1008007, 1008008};
    ForEachNumber<State>(
        [&](unsigned int state)
        {
            EXPECT_EQ(Make<State>(state).GetEquivalentError().GetValue(),
                      state > 2700 ? errors[state - 2701] : 0);
            ForEachNumber<State>(
                [state](unsigned int other)
                {
                    bool const isWorse = state >= 2702 && other > state;
                    auto value = Make<State>(state);
                    EXPECT_EQ(value.IsWorse(Make<State>(other)), isWorse) << other << " than " << state;
                    EXPECT_EQ(value.SetIfWorse(Make<State>(other)), isWorse);
                    EXPECT_EQ(value.GetValue(), isWorse ? other : state);
                });
        });
    nxWiderEnum<State> foreign;
    foreign = static_cast<nxEnumValue>(5000);
    EXPECT_FALSE(Make<State>(2705).IsWorse(foreign) || foreign.IsWorse(Make<State>(2706)));
}

namespace
{
constexpr unsigned long long null64 = 0x8000000000000000;
constexpr unsigned long long exchangeField = 0x8000;
constexpr unsigned long long syntheticField = 0x10000;
} // namespace

TEST(nxAccountNodeFlagBitMask, SetsItsFlagsAndConvertsThemToFields)
{
    nxAccountNodeFlagBitMask flags;
    flags.SetGenerateSyntheticStrategyPositions(true);
    EXPECT_TRUE(flags.GetGenerateSyntheticStrategyPositions() &&
                !flags.GetGenerateExchangeStrategyPositions());
    flags.SetGenerateExchangeStrategyPositions(true);
    flags.SetGenerateSyntheticStrategyPositions(false);
    EXPECT_EQ(flags.GetValue(), 0x1u);
    flags.SetNull();
    flags.SetGenerateExchangeStrategyPositions(false);
    EXPECT_TRUE(flags.IsNull());
    flags.SetGenerateExchangeStrategyPositions(true);
    EXPECT_EQ(flags.GetValue(), 0x1u);

    for (unsigned long long bits = 0; bits < 4; ++bits)
    {
        nxAccountNodeDefinitionFieldsBitMask fields(0x7F);
        nxAccountNodeFlagBitMask(bits).ConvertToAccountNodeDefinitionFieldsBitMask(fields);
        EXPECT_EQ(fields.GetValue(), bits * exchangeField);
        nxAccountNodeFlagBitMask back(0xF0);
        fields.SetBits(0x7F); // other fields don't matter
        back.ConvertFromAccountNodeDefinitionFieldsBitMask(fields);
        EXPECT_EQ(back.GetValue(), bits);
    }
}

TEST(nxAccountNodeFlagBitMask, MergesWhatIsPresent)
{
    unsigned long long const rows[][4] = {
        // before, the other, what it holds, after
        {0x2, 0x1, exchangeField, 0x3},
        {0x3, 0x0, exchangeField, 0x2},
        {0x1, 0x2, syntheticField | 0x7F, 0x3},
        {0x3, 0x0, exchangeField | syntheticField, 0x0},
        {0x3, 0x0, 0x7F, 0x3},
        {0x0, 0xF7, exchangeField, 0x1},
        {null64, 0x3, 0x0, 0x0}, // even then bits are added, which makes it valid
        {null64, 0x3, syntheticField, 0x2}};
    for (auto const& [before, other, presence, after] : rows)
    {
        nxAccountNodeFlagBitMask flags(before);
        flags.MergeFromAccountNodeFlagsBitMaskUsingPresenceFieldsBitMask(
            nxAccountNodeFlagBitMask(other), nxAccountNodeDefinitionFieldsBitMask(presence));
        EXPECT_EQ(flags.GetValue(), after);
    }
    nxAccountNodeFlagBitMask itself(0x3);
    itself.MergeFromAccountNodeFlagsBitMaskUsingPresenceFieldsBitMask(
        itself, nxAccountNodeDefinitionFieldsBitMask(exchangeField));
    EXPECT_EQ(itself.GetValue(), 0x3u);
}
