// What the words of accounts, users and limits tell of themselves.

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

constexpr unsigned long long null64 = 0x8000000000000000;
constexpr unsigned long long exchangeField = 0x8000;
constexpr unsigned long long syntheticField = 0x10000;
} // namespace

TEST(nxNodeStateLogString, IsTheBareWord)
{
    EXPECT_EQ(Make<nxAccountNodeStateEnum>(2801).GetAsLogString(), "ACTIVE");
    EXPECT_EQ(Make<nxAccountNodeStateEnum>(2802).GetAsLogString(), "DELETED");
    EXPECT_EQ(Make<nxAccountNodeStateEnum>(0).GetAsLogString(), "UNDEFINED");
    EXPECT_EQ(Make<nxAccountNodeStateEnum>(2).GetAsLogString(), "NO_CHANGE");
    EXPECT_EQ(Make<nxUserNodeStateEnum>(2851).GetAsLogString(), "ACTIVE");
    EXPECT_EQ(Make<nxUserNodeStateEnum>(2852).GetAsLogString(), "DISABLED");
    EXPECT_EQ(Make<nxUserNodeStateEnum>(2853).GetAsLogString(), "DELETED");
    EXPECT_EQ(Make<nxUserNodeStateEnum>(0).GetAsLogString(), "UNDEFINED");
    EXPECT_EQ(Make<nxUserNodeStateEnum>(2).GetAsLogString(), "NO_CHANGE");

    // A constructor refuses such a number; only the copy of a wider class brings it here.
    nxWiderEnum<nxUserNodeStateEnum> user;
    user = NX_BUY;
    EXPECT_EQ(nxUserNodeStateEnum(user).GetAsLogString(), "NOT_RECOGNISED");
    nxWiderEnum<nxAccountNodeStateEnum> account;
    account = NX_BUY;
    EXPECT_EQ(nxAccountNodeStateEnum(account).GetAsLogString(), "NOT_RECOGNISED");
}

TEST(nxAccountWordsSubjects, FallBack)
{
    EXPECT_EQ(Make<nxDataActiveStatusEnum>(7701).GetIndexedMapTail(), ".STATUS_ACTIVE");
    EXPECT_EQ(Make<nxDataActiveStatusEnum>(7702).GetIndexedMapTail(), ".STATUS_INACTIVE");
    for (unsigned int const number : {7703u, 0u, 2u})
        EXPECT_EQ(Make<nxDataActiveStatusEnum>(number).GetIndexedMapTail(), ".*");

    constexpr char const* words[] = {
        "MIN", "5MIN", "15MIN", "HOUR", "DAILY", "WEEK", "NX_PANDL_DATA_PERIOD_CUSTOM"};
    for (unsigned int number = 15001; number <= 15007; ++number)
        EXPECT_EQ(Make<nxPandLDataPeriodEnum>(number).GetSubscriptionSubjectDescription(),
                  words[number - 15001]);
    EXPECT_EQ(nxPandLDataPeriodEnum().GetSubscriptionSubjectDescription(), "UNDEFINED");
}

TEST(nxLimitAccountStateEnumSeverity, RanksFiveStates)
{
    for (unsigned int const state : {0u, 2u, 2701u, 2702u, 2703u, 2704u, 2705u, 2706u})
    {
        for (unsigned int const other : {0u, 2u, 2701u, 2702u, 2703u, 2704u, 2705u, 2706u})
        {
            bool const isWorse = state >= 2702 && other > state;
            auto value = Make<nxLimitAccountStateEnum>(state);
            EXPECT_EQ(value.IsWorse(Make<nxLimitAccountStateEnum>(other)), isWorse)
                << other << " than " << state;
            EXPECT_EQ(value.SetIfWorse(Make<nxLimitAccountStateEnum>(other)), isWorse);
            EXPECT_EQ(value.GetValue(), isWorse ? other : state);
        }
    }
    nxWiderEnum<nxLimitAccountStateEnum> foreign;
    foreign = static_cast<nxEnumValue>(5000);
    EXPECT_FALSE(Make<nxLimitAccountStateEnum>(2705).IsWorse(foreign));
    EXPECT_FALSE(foreign.IsWorse(Make<nxLimitAccountStateEnum>(2706)));
}

TEST(nxLimitAccountStateEnumError, IsOfTheStatesThatKeepFromTrading)
{
    constexpr unsigned int errors[] = {1008006, 0, 0, 0, 1008007, 1008008};
    for (unsigned int number = 2701; number <= 2706; ++number)
        EXPECT_EQ(Make<nxLimitAccountStateEnum>(number).GetEquivalentError().GetValue(),
                  errors[number - 2701]);
    EXPECT_TRUE(nxLimitAccountStateEnum().GetEquivalentError().IsOK());
}

TEST(nxAccountNodeFlagBitMaskFlags, AreSetAsBits)
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
}

TEST(nxAccountNodeFlagBitMaskFields, AreConvertedBothWays)
{
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

TEST(nxAccountNodeFlagBitMaskMerge, TakesWhatIsPresent)
{
    struct Row
    {
        unsigned long long before;
        unsigned long long other;
        unsigned long long presence;
        unsigned long long after;
    };
    constexpr Row rows[] = {
        {0x2, 0x1, exchangeField, 0x3},
        {0x3, 0x0, exchangeField, 0x2},
        {0x1, 0x2, syntheticField | 0x7F, 0x3},
        {0x3, 0x0, exchangeField | syntheticField, 0x0},
        {0x3, 0x0, 0x7F, 0x3},
        {0x0, 0xF7, exchangeField, 0x1},
        {null64, 0x3, 0x0, 0x0}, // even then bits are added, which makes it valid
        {null64, 0x3, syntheticField, 0x2},
    };
    for (Row const& row : rows)
    {
        nxAccountNodeFlagBitMask flags(row.before);
        flags.MergeFromAccountNodeFlagsBitMaskUsingPresenceFieldsBitMask(
            nxAccountNodeFlagBitMask(row.other), nxAccountNodeDefinitionFieldsBitMask(row.presence));
        EXPECT_EQ(flags.GetValue(), row.after);
    }
    nxAccountNodeFlagBitMask itself(0x3);
    itself.MergeFromAccountNodeFlagsBitMaskUsingPresenceFieldsBitMask(
        itself, nxAccountNodeDefinitionFieldsBitMask(exchangeField));
    EXPECT_EQ(itself.GetValue(), 0x3u);
}
