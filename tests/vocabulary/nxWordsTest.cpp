// What the classes of the vocabulary tell of their numbers, what they read, and that neither costs memory.

#include "core/numbers/nxDecimal.h"
#include "core/text/nxStringHelper.h"
#include "core/vocabulary/nxVocabulary.h"
#include "tests/prices/nxAllocationCount.h"
#include "tests/vocabulary/nxAnyEnum.h"

#include <gtest/gtest.h>

#include <concepts>
#include <set>
#include <sstream>
#include <stdexcept>

namespace
{
/// What stands behind a number: nothing for true, "=" and the answer for others, "-" for false and for an
/// empty word.
template <typename Answer>
std::string WordFor(Answer const& answer)
{
    if constexpr (std::same_as<Answer, bool>)
        return answer ? "" : "-";
    else if constexpr (std::derived_from<Answer, nxEnum>)
        return answer.IsUndefined() ? "-" : '=' + std::to_string(answer.GetValue());
    else
    {
        std::ostringstream word;
        word << '=' << answer;
        return word.str() == "=" ? "-" : word.str();
    }
}

/// What an operation tells of the numbers, as "0 2 402-404" for a predicate and as "402=P 403-404=O" for
/// words.
template <typename Enumeration, typename Operation>
std::string Tell(Operation operation, char separator = ' ')
{
    std::vector<std::tuple<unsigned int, unsigned int, std::string>> spans;
    nxOpenEnum<Enumeration> const bounds;
    for (unsigned int number = 0; number < bounds._MaxValue(); ++number)
    {
        if (number != NX_UNDEFINED && number != NX_NO_CHANGE && number <= bounds._MinValue())
            continue; // is of another class
        std::string const word = WordFor(operation(Enumeration(nxEnumValue(number))));
        if (spans.empty() || std::get<1>(spans.back()) + 1 != number || std::get<2>(spans.back()) != word)
            spans.emplace_back(number, number, word);
        std::get<1>(spans.back()) = number;
    }
    std::string text;
    for (auto const& [first, last, word] : spans)
        if (word != "-")
            text +=
                separator + std::to_string(first) + (first == last ? "" : '-' + std::to_string(last)) + word;
    return text.substr(text.empty() ? 0 : 1);
}

/// Runs an operation. @return "!" when it says that it failed.
template <typename Operation>
std::string Try(Operation operation)
{
    if constexpr (std::is_void_v<decltype(operation())>)
        return operation(), "";
    else if constexpr (std::same_as<decltype(operation()), bool>)
        return operation() ? "" : "!";
    else
        return operation().IsOK() ? "" : "!";
}

/// A word of a table, as whatever an operation takes.
struct Word : public std::string
{
    operator char() const
    {
        return at(0);
    }
    template <std::integral Number>
    operator Number() const
    {
        return static_cast<Number>(std::stoll(*this));
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
} // namespace

TEST(nxWords, AreThoseOfTheTable)
{
#define NX_WHERE NX_WORDS
#define NX_WORDS(Class, Operation, expected)                                                                 \
    EXPECT_EQ(Tell<Class>([](Class const& value) { return value.Operation(); }), expected);
#define NX_READ(Class, Operation, expected)                                                                  \
    EXPECT_EQ(Read(expected,                                                                                 \
                   [](Word const& word)                                                                      \
                   {                                                                                         \
                       Class value(NX_NO_CHANGE);                                                            \
                       std::string const failed = Try([&] { return value.Operation(word); });                \
                       return std::to_string(value.GetValue()) + failed;                                     \
                   }),                                                                                       \
              expected);
#define NX_MAKE(Class, Operation, expected)                                                                  \
    EXPECT_EQ(Read(expected, [](Word const& word)                                                            \
                   { return std::to_string(Class(Class::Operation(word)).GetValue()); }),                    \
              expected);
#define NX_GIVEN(Class, Operation, before, expected)                                                         \
    EXPECT_EQ(Tell<Class>(                                                                                   \
                  [](Class const& value)                                                                     \
                  {                                                                                          \
                      auto out = before;                                                                     \
                      std::string const failed = Try([&] { return value.Operation(out); });                  \
                      return nxStringHelper::GetAsString(out) + failed;                                      \
                  }),                                                                                        \
              expected);
#define NX_PAIRS(Class, Other, Operation, expected)                                                          \
    EXPECT_EQ(Tell<Class>(                                                                                   \
                  [](Class value)                                                                            \
                  {                                                                                          \
                      auto const ask = [&value](Other const& other)                                          \
                      { return value.Operation(nxEnumValue(other.GetValue())); };                            \
                      return Tell<Other>(ask, ',');                                                          \
                  }),                                                                                        \
              expected);
#include "tests/vocabulary/nxWords.def"
}

// A constructor refuses such a number; only the copy of a wider class brings it here.
TEST(nxWords, OfAWiderClassAreNotRecognised)
{
    nxWiderEnum<nxUserNodeStateEnum> user;
    user = NX_FALSE;
    EXPECT_EQ(nxUserNodeStateEnum(user).GetAsLogString(), "NOT_RECOGNISED");
    nxWiderEnum<nxAccountNodeStateEnum> account;
    account = NX_FALSE;
    EXPECT_EQ(nxAccountNodeStateEnum(account).GetAsLogString(), "NOT_RECOGNISED");
    nxWiderEnum<nxBuySellEnum> side;
    side = NX_TRUE;
    EXPECT_EQ(side.GetSignString(), "-"); // any other number counts as a sale
    EXPECT_EQ(side.GetAsSingleCharacterCode(), ' ');
}

TEST(nxWords, OfTwoValues)
{
    auto const overall = [](nxBuySellEnum const& strategy)
    {
        return Tell<nxBuySellEnum>(
            [&](nxBuySellEnum const& leg) { return nxBuySellEnum::GetOverallBuySell(strategy, leg); }, ',');
    };
    EXPECT_EQ(Tell<nxBuySellEnum>(overall), "11=11=11,12=12 12=11=12,12=11");

    auto state = nxLimitAccountStateEnum(nxEnumValue(2702));
    EXPECT_TRUE(state.SetIfWorse(nxLimitAccountStateEnum(nxEnumValue(2703))));
    EXPECT_TRUE(!state.SetIfWorse(nxLimitAccountStateEnum(nxEnumValue(2702))) && state == 2703u);

    unsigned int days = 99;
    for (unsigned int from = 0; from < 7; ++from)
    {
        auto const day = nxDayOfWeekEnum(nxEnumValue(13201 + from));
        for (unsigned int distance = 0; distance < 7; ++distance)
        {
            auto const target = nxDayOfWeekEnum(nxEnumValue(13201 + (from + distance) % 7));
            EXPECT_TRUE(day.GetDaysUntil(target, days).IsOK() && days == distance);
        }
        EXPECT_EQ(day.GetDaysUntil(NX_UNDEFINED, days), NX_ERR_INVALID_PARAMETER);
        EXPECT_EQ(nxDayOfWeekEnum(NX_NO_CHANGE).GetDaysUntil(day, days), NX_ERR_INVALID_PARAMETER);
        EXPECT_EQ(days, 6u);
    }
}

TEST(nxProductStateBitMask, PhasesAreToldFromTheBits)
{
    constexpr unsigned int closeAuction = 0x800000;
    for (unsigned int const others : {0x0u, 0x8u, 0x3F7FFFF8u})
        for (unsigned int phases = 0; phases < 16; ++phases)
        {
            bool const isPreOpen = (phases & 1) != 0;
            bool const isOpen = (phases & 2) != 0;
            bool const isClosing = (phases & 12) != 0; // before the close, or by auction
            nxProductStateBitMask const state(others | (phases & 7) | (phases & 8 ? closeAuction : 0));
            EXPECT_EQ(state.IsAuction(), isPreOpen || isClosing);
            EXPECT_EQ(state.IsMarketOpenForAuctionMode(), isPreOpen || isClosing || isOpen);
            EXPECT_EQ(state.IsMarketOpenForTrading(), isOpen && !isClosing);
            EXPECT_EQ(state.IsMarketOpenForOrderManagement(), isPreOpen || isOpen);
            EXPECT_EQ(state.IsMarketOpen(), isPreOpen || isOpen);
        }
}

// Those that share a phase, the first and last that there is, and what is none.
TEST(nxProductStateBitMask, WordsHaveSynonymsAndKnowNoCase)
{
    constexpr char const* words =
        "PREOPEN=1|PREOPENING=1|PRE_TRADING=1|OPEN=2|NORMAL=2|RET_TRADING=2|CLOSED=8|HOLIDAY=8|INACTIVE=8|"
        "PRICE_FAST=64|START_FAST=64|FROZEN=2097152|FREEZE=2097152|EXPIRING=536870912|nope=3!|=3!|"
        "OPEN =3!|FAST=3!|HALT=3!|PRICE_LIMITS=3!";
    for (bool const isLower : {false, true})
        EXPECT_EQ(Read(words,
                       [isLower](std::string word)
                       {
                           if (isLower)
                               nxStringHelper::ToLower(word);
                           nxProductStateBitMask state(3u);
                           bool const isKnown =
                               nxProductStateBitMask::GetStateBitMaskValueForTokenString(word, state);
                           return std::to_string(state.GetValue()) + (isKnown ? "" : "!");
                       }),
                  words);
}

TEST(nxFunctionEnum, RightsAndSubjects)
{
    std::set<nxFunctionEnum> functions = {nxFunctionEnum(nxEnumValue(199998))};
    nxFunctionEnum().GetAllRegisteredFunctionPermissions(functions);
    EXPECT_TRUE(functions.size() == 442 && *functions.begin() == 100001u && *functions.rbegin() == 103000u);
    EXPECT_EQ(nxFunctionEnum(nxEnumValue(100203)).GetAsSubjectName(), "PULL_ORDER");
    EXPECT_EQ(nxFunctionEnum(nxEnumValue(101205)).GetAsSubjectName(), "UI_KORVANE_PRICE_SHOW_GROUP_fORDERS");
    EXPECT_EQ(nxFunctionEnum(nxEnumValue(100033)).GetAsSubjectName(),
              "ED"); // no row: the end of "NOT_REGISTERED"
    EXPECT_THROW((void)nxFunctionEnum().GetAsSubjectName(), std::out_of_range);
    EXPECT_THROW((void)nxFunctionEnum(NX_NO_CHANGE).GetAsSubjectName(), std::out_of_range);

    std::string subject = "PRICE.BX";
    nxMessageChannelEnum(NX_CHANNEL_4).AppendSubscriptionSubjectSuffix(subject);
    nxReplyHandlerTypeEnum(NX_REPLY_HANDLER_TYPE_ASYNC).AppendSubscriptionSubjectSuffix(subject);
    EXPECT_EQ(subject, "PRICE.BX.CH4.AS");
}

TEST(nxEnumCost, NoMemory)
{
    std::string const token = "NX_ERR_INVALID_PARAMETER";
    std::string const unknown = "NX_ERR_THAT_THERE_IS_NOT";
    std::string out;
    out.reserve(64);
    nxErrorEnum error(NX_ERR_INVALID_PARAMETER);
    nxAllocationCount const count;
    std::size_t const size = error.GetShortDescription().size() + error.GetLongDescription().size() +
                             nxBuySellEnum().GetAsString().size();
    EXPECT_TRUE(error.SetFromString(token) && !error.SetFromString(unknown) && size != 0);
    nxStringHelper::AppendAsString(out, error);
    EXPECT_EQ(count.Get(), 0u);
    EXPECT_EQ(out, token);
}
