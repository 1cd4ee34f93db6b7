// What the classes of the vocabulary tell of their numbers, and what they read.

#include "core/numbers/nxDecimal.h"
#include "core/vocabulary/nxVocabulary.h"
#include "tests/vocabulary/nxAnyEnum.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace
{
/// @return the numbers and spans of numbers for which the predicate is true, as "0 2 402-404".
template <typename Enumeration>
std::string WhereTrue(bool (*isTrue)(Enumeration const&))
{
    std::vector<std::pair<unsigned int, unsigned int>> spans;
    ForEachNumber<Enumeration>(
        [&](unsigned int number)
        {
            if (!isTrue(Make<Enumeration>(number)))
                return;
            if (spans.empty() || number != spans.back().second + 1)
                spans.emplace_back(number, number);
            spans.back().second = number;
        });
    std::string text;
    for (auto const& [first, last] : spans)
        text += (text.empty() ? "" : " ") + std::to_string(first) +
                (first == last ? "" : '-' + std::to_string(last));
    return text;
}

/// @return what an operation makes of the numbers, as "402=P 403=O"; a number of an empty word is left out.
template <typename Enumeration, typename Operation>
std::string Words(Operation operation)
{
    std::string text;
    ForEachNumber<Enumeration>(
        [&](unsigned int number)
        {
            std::ostringstream word;
            auto const result = operation(Make<Enumeration>(number));
            if constexpr (std::is_base_of_v<nxEnum, decltype(operation(Make<Enumeration>(number)))>)
                word << (result.IsUndefined() ? "" : std::to_string(result.GetValue()));
            else
                word << result;
            if (!word.str().empty())
                text += (text.empty() ? "" : " ") + std::to_string(number) + '=' + word.str();
        });
    return text;
}

/// A word of a table, as whatever an operation takes.
struct Word : public std::string
{
    operator char() const
    {
        return at(0);
    }
    operator int() const
    {
        return std::stoi(*this);
    }
    operator unsigned int() const
    {
        return static_cast<unsigned int>(std::stoul(*this));
    }
};

bool IsDone(bool done)
{
    return done;
}

bool IsDone(nxErrorEnum const& error)
{
    return error.IsOK();
}

/// @return what the operation makes of each word of "word=number|word=number", in that form.
template <typename Operation>
std::string Read(std::string const& expected, Operation operation)
{
    std::istringstream pairs(expected);
    std::string text;
    for (Word word; std::getline(pairs, word, '|');)
    {
        word.erase(word.rfind('='));
        text += (text.empty() ? "" : "|") + word + '=' + operation(word);
    }
    return text;
}

template <typename Enumeration, typename Operation>
std::string ReadInto(Word const& word, Operation operation)
{
    Enumeration value(NX_NO_CHANGE);
    bool done = true;
    if constexpr (std::is_void_v<decltype(operation(value, word))>)
        operation(value, word);
    else
        done = IsDone(operation(value, word));
    return std::to_string(value.GetValue()) + (done ? "" : "!");
}

struct Row
{
    char const* operation;
    char const* expected;
    std::string (*ask)(char const* expected);
};

constexpr Row rows[] = {
#define NX_WHERE(Class, Predicate, expected)                                                                 \
    {#Class "::" #Predicate, expected,                                                                       \
     [](char const*) { return WhereTrue<Class>([](Class const& value) { return value.Predicate(); }); }},
#define NX_WORDS(Class, Operation, expected)                                                                 \
    {#Class "::" #Operation, expected,                                                                       \
     [](char const*) { return Words<Class>([](Class const& value) { return value.Operation(); }); }},
#define NX_READ(Class, Operation, expected)                                                                  \
    {#Class "::" #Operation, expected,                                                                       \
     [](char const* words)                                                                                   \
     {                                                                                                       \
         return Read(words,                                                                                  \
                     [](Word const& word) {                                                                  \
                         return ReadInto<Class>(word, [](Class& value, Word const& given)                    \
                                                { return value.Operation(given); });                         \
                     });                                                                                     \
     }},
#define NX_MAKE(Class, Operation, expected)                                                                  \
    {#Class "::" #Operation, expected,                                                                       \
     [](char const* words)                                                                                   \
     {                                                                                                       \
         return Read(words, [](Word const& word)                                                             \
                     { return std::to_string(Class(Class::Operation(word)).GetValue()); });                  \
     }},
#include "tests/vocabulary/nxWords.def"
};
} // namespace

TEST(nxWords, AreThoseOfTheTable)
{
    for (Row const& row : rows)
        EXPECT_EQ(row.ask(row.expected), row.expected) << row.operation;
}

TEST(nxWords, OfOrdersPassActionsOnAndCutTheirPrefix)
{
    using Synthetic = nxSyntheticOrderTypeEnum;
    EXPECT_TRUE(Make<Synthetic>(5902).IsSupportedPassThroughAction(NX_FUNCTION_SHATTER_ORDER));
    EXPECT_FALSE(Make<Synthetic>(5901).IsSupportedPassThroughAction(NX_FUNCTION_SHATTER_ORDER));
    EXPECT_FALSE(Make<Synthetic>(5902).IsSupportedPassThroughAction(NX_FUNCTION_SUBMIT_ORDER));
    for (unsigned int parent = 5900; parent <= 5928; ++parent)
        for (unsigned int child = 7000; child <= 7012; ++child)
            EXPECT_EQ(
                Make<nxSyntheticChildOrderTypeEnum>(child).SupportsUserAmendments(Make<Synthetic>(parent)),
                (parent == 5904 || parent == 5915) && (child == 7001 || child == 7002 || child == 7008))
                << child << " of " << parent;
    std::map<unsigned int, char const*> const suffixes = {{5901, "SYNTHETIC"},  {5915, "TALVEX"},
                                                          {5916, "SIMPLE_TLV"}, {5919, "ON_PRE_OPEN"},
                                                          {0, "before"},        {2, "before"}};
    for (auto const& [number, expected] : suffixes)
    {
        std::string suffix = "before";
        EXPECT_EQ(Make<Synthetic>(number).GetShortDescriptionSuffix(suffix), number > 2);
        EXPECT_EQ(suffix, expected);
    }
}

TEST(nxWords, OfAWiderClassAreNotRecognised)
{
    // A constructor refuses such a number; only the copy of a wider class brings it here.
    nxWiderEnum<nxUserNodeStateEnum> user;
    user = NX_BUY;
    EXPECT_EQ(nxUserNodeStateEnum(user).GetAsLogString(), "NOT_RECOGNISED");
    nxWiderEnum<nxAccountNodeStateEnum> account;
    account = NX_BUY;
    EXPECT_EQ(nxAccountNodeStateEnum(account).GetAsLogString(), "NOT_RECOGNISED");
    nxWiderEnum<nxBuySellEnum> side;
    side = NX_TRUE;
    EXPECT_EQ(side.GetSignString(), "-"); // any other number counts as a sale
    EXPECT_EQ(side.GetAsSingleCharacterCode(), ' ');
}

TEST(nxBuySellEnum, TakesTheSideOfTheStrategyIntoAccount)
{
    nxEnumValue const sides[] = {NX_BUY, NX_SELL, NX_UNDEFINED, NX_NO_CHANGE};
    for (nxEnumValue const strategy : sides)
    {
        for (nxEnumValue const leg : sides)
        {
            bool const known = strategy >= NX_BUY && leg >= NX_BUY;
            EXPECT_EQ(nxBuySellEnum::GetOverallBuySell(strategy, leg), !known            ? NX_UNDEFINED
                                                                       : strategy == leg ? NX_BUY
                                                                                         : NX_SELL);
        }
    }
}

TEST(nxLimitAccountStateEnum, RanksItsStates)
{
    using State = nxLimitAccountStateEnum;
    auto const rankAll = [](unsigned int state)
    {
        ForEachNumber<State>(
            [state](unsigned int other)
            {
                bool const isWorse = state >= 2702 && other > state;
                auto value = Make<State>(state);
                EXPECT_EQ(value.IsWorse(Make<State>(other)), isWorse) << other << " than " << state;
                EXPECT_EQ(value.SetIfWorse(Make<State>(other)), isWorse);
                EXPECT_EQ(value.GetValue(), isWorse ? other : state);
            });
    };
    ForEachNumber<State>(rankAll);
}

TEST(nxDayOfWeekEnum, CountsForward)
{
    unsigned int days = 99;
    for (unsigned int from = 0; from < 7; ++from)
    {
        auto const day = Make<nxDayOfWeekEnum>(13201 + from);
        for (unsigned int distance = 0; distance < 7; ++distance)
        {
            auto const target = Make<nxDayOfWeekEnum>(13201 + (from + distance) % 7);
            EXPECT_TRUE(day.GetDaysUntil(target, days).IsOK());
            EXPECT_EQ(days, distance);
        }
        EXPECT_EQ(day.GetDaysUntil(NX_UNDEFINED, days), NX_ERR_INVALID_PARAMETER);
        EXPECT_EQ(nxDayOfWeekEnum(NX_NO_CHANGE).GetDaysUntil(day, days), NX_ERR_INVALID_PARAMETER);
        EXPECT_EQ(days, 6u);
    }
}

TEST(nxWords, AreWrittenWhereTheCallerSays)
{
    std::string code;
    for (unsigned int number = 14801; number <= 14803; ++number)
    {
        EXPECT_TRUE(Make<nxMultiLegReportingTypeEnum>(number).GetAsFIXMultiLegReportingType(code).IsOK());
        EXPECT_EQ(code, std::to_string(number - 14800));
    }
    EXPECT_EQ(nxMultiLegReportingTypeEnum(NX_NO_CHANGE).GetAsFIXMultiLegReportingType(code),
              NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(code, "");
    unsigned int field = 77;
    EXPECT_FALSE(nxProductIDFieldEnum().GetFieldAsU32(field));
    EXPECT_EQ(field, 77u);
    for (unsigned int number = 501; number <= 511; ++number)
    {
        EXPECT_TRUE(Make<nxProductIDFieldEnum>(number).GetFieldAsU32(field));
        EXPECT_EQ(field, number - 501);
    }
    EXPECT_TRUE(nxProductIDFieldEnum(NX_NO_CHANGE).GetFieldAsU32(field));
    EXPECT_EQ(field, 4294966797u);
}

TEST(nxPriceFormatEnum, StepIsExactAtItsPlaces)
{
    auto const step = [](nxPriceFormatEnum const& format)
    {
        nxDecimal number(1, 2);
        format.GetDefaultNumericValue(number);
        return number.GetAsLogString('.');
    };
    EXPECT_EQ(Words<nxPriceFormatEnum>(step),
              "0=NULL 2=NULL 4501=0.01 4502=1 4503=0.5 4504=0.25 4505=0.25 4506=0.125 4507=0.10 4508=0.0625 "
              "4509=0.05 4510=0.03125 4511=0.025 4512=0.015625 4513=0.01 4514=0.015625 4515=0.0078125 "
              "4516=0.0078125 4517=0.005 4518=0.01 4519=0.001 4520=0.0031250 4521=0.015625 4522=0.0078125 "
              "4523=0.0025 4524=0.0833333333 4525=0.00390625 4526=0.001953125 4527=0.00390625 "
              "4528=0.00390625");
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
    // The words that share a state, the first and last bit that a word names, and what is no word.
    std::map<std::string, unsigned int> const states = {{"PREOPEN", 0x1},     {"PREOPENING", 0x1},
                                                        {"PRE_TRADING", 0x1}, {"OPEN", 0x2},
                                                        {"NORMAL", 0x2},      {"RET_TRADING", 0x2},
                                                        {"CLOSED", 0x8},      {"HOLIDAY", 0x8},
                                                        {"INACTIVE", 0x8},    {"PRICE_FAST", 0x40},
                                                        {"START_FAST", 0x40}, {"FROZEN", 0x200000},
                                                        {"FREEZE", 0x200000}, {"EXPIRING", 0x20000000},
                                                        {"nope", 0},          {"", 0},
                                                        {"OPEN ", 0},         {"FAST", 0},
                                                        {"HALT", 0},          {"PRICE_LIMITS", 0}};
    constexpr unsigned int before = 0x3;
    for (auto const& [name, bits] : states)
    {
        std::string lower = name;
        for (char& letter : lower)
            letter = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 'a' - 'A') : letter;
        for (std::string const& word : {name, lower})
        {
            nxProductStateBitMask state(before);
            EXPECT_EQ(nxProductStateBitMask::GetStateBitMaskValueForTokenString(word, state), bits != 0)
                << word;
            EXPECT_EQ(state.GetValue(), bits != 0 ? bits : before) << word;
        }
    }
}

TEST(nxFunctionEnum, RightsAndSubjects)
{
    std::set<nxFunctionEnum> functions = {Make<nxFunctionEnum>(199998)};
    nxFunctionEnum().GetAllRegisteredFunctionPermissions(functions);
    EXPECT_EQ(functions.size(), 442u);
    EXPECT_EQ(functions.begin()->GetValue(), 100001u);
    EXPECT_EQ(functions.rbegin()->GetValue(), 103000u);

    EXPECT_EQ(Make<nxFunctionEnum>(100203).GetAsSubjectName(), "PULL_ORDER");
    EXPECT_EQ(Make<nxFunctionEnum>(101205).GetAsSubjectName(), "UI_KORVANE_PRICE_SHOW_GROUP_fORDERS");
    EXPECT_EQ(Make<nxFunctionEnum>(100033).GetAsSubjectName(), "ED"); // no row: the end of "NOT_REGISTERED"
    for (unsigned int const number : {0u, 2u})
        EXPECT_THROW((void)Make<nxFunctionEnum>(number).GetAsSubjectName(), std::out_of_range);

    std::string subject = "PRICE.BX";
    nxMessageChannelEnum(NX_CHANNEL_4).AppendSubscriptionSubjectSuffix(subject);
    nxReplyHandlerTypeEnum(NX_REPLY_HANDLER_TYPE_ASYNC).AppendSubscriptionSubjectSuffix(subject);
    EXPECT_EQ(subject, "PRICE.BX.CH4.AS");
}
