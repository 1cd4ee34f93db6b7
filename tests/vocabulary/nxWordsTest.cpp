// What the classes of the vocabulary tell of their numbers, and what they read.

#include "core/numbers/nxDecimal.h"
#include "core/text/nxStringHelper.h"
#include "core/vocabulary/nxVocabulary.h"
#include "tests/vocabulary/nxAnyEnum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace
{
/// @return the numbers and spans of numbers for which the predicate is true, as "0 2 402-404".
template <typename Enumeration, typename Predicate>
std::string WhereTrue(Predicate isTrue)
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

bool IsDone(bool done)
{
    return done;
}

bool IsDone(nxErrorEnum const& error)
{
    return error.IsOK();
}

/// @return what an operation gives through its parameter, as "402=P 2=N!"; "!" tells that it failed.
template <typename Enumeration, typename Out, typename Operation>
std::string Given(Out const& before, Operation operation)
{
    return Words<Enumeration>(
        [&](Enumeration const& value)
        {
            Out out = before;
            bool const done = IsDone(operation(value, out));
            return nxStringHelper::GetAsString(out) + (done ? "" : "!");
        });
}

/// @return the other numbers for which an operation on each number is true, as "402=5,7-9".
template <typename Enumeration, typename Other, typename Operation>
std::string Pairs(Operation isTrue)
{
    return Words<Enumeration>(
        [&](Enumeration const& value)
        {
            std::string text =
                WhereTrue<Other>([&](Other const& other) { return isTrue(Enumeration(value), other); });
            std::ranges::replace(text, ' ', ',');
            return text;
        });
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
#define NX_GIVEN(Class, Operation, before, expected)                                                         \
    {#Class "::" #Operation, expected, [](char const*) {                                                     \
         return Given<Class>(before, [](Class const& value, auto& out) { return value.Operation(out); });    \
     }},
#define NX_PAIRS(Class, Other, Operation, expected)                                                          \
    {#Class "::" #Operation, expected,                                                                       \
     [](char const*)                                                                                         \
     {                                                                                                       \
         return Pairs<Class, Other>([](Class value, Other const& other)                                      \
                                    { return value.Operation(nxEnumValue(other.GetValue())); });             \
     }},
#include "tests/vocabulary/nxWords.def"
};
} // namespace

TEST(nxWords, AreThoseOfTheTable)
{
    for (Row const& row : rows)
        EXPECT_EQ(row.ask(row.expected), row.expected) << row.operation;
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

    auto state = Make<nxLimitAccountStateEnum>(2702);
    EXPECT_TRUE(state.SetIfWorse(Make<nxLimitAccountStateEnum>(2703)));
    EXPECT_FALSE(state.SetIfWorse(Make<nxLimitAccountStateEnum>(2702)));
    EXPECT_EQ(state.GetValue(), 2703u);
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
    struct StateWord
    {
        std::string name;
        unsigned int bits;
    };
    StateWord const words[] = {
#define NX_STATE_WORD(word, bits) {word, bits},
#include "tests/vocabulary/nxStateWords.def"
    };
    constexpr unsigned int before = 0x3;
    for (auto const& [name, bits] : words)
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
