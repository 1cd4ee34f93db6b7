// What every enumeration does with numbers and tokens: its own, foreign and unknown ones.

#include "core/vocabulary/nxVocabulary.h"
#include "tests/vocabulary/nxWordsTest.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <set>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

// One number beside the type.
static_assert(sizeof(nxBuySellEnum) <= 2 * sizeof(void*));
static_assert(sizeof(nxErrorEnum) == sizeof(nxBuySellEnum));
static_assert(!std::has_virtual_destructor_v<nxEnum>);
static_assert(!std::is_default_constructible_v<nxEnum> && !std::is_copy_constructible_v<nxEnum>);
static_assert(std::is_trivially_destructible_v<nxBuySellEnum>);
static_assert(std::is_same_v<std::underlying_type_t<nxEnumValue>, unsigned int>);
// Of enumerators only: a number has to be named as one.
static_assert(std::is_convertible_v<nxEnumValue, nxBuySellEnum>);
static_assert(!std::is_constructible_v<nxBuySellEnum, unsigned int>);
static_assert(!std::is_constructible_v<nxBuySellEnum, nxBoolEnum>);
static_assert(std::is_same_v<decltype(nxBuySellEnum() = NX_BUY), nxBuySellEnum&>);
static_assert(std::is_same_v<decltype(nxBuySellEnum() = 11u), nxEnum const&>);

namespace
{
nxEnumValue Number(unsigned int value)
{
    return static_cast<nxEnumValue>(value);
}

using Numbers = std::initializer_list<unsigned int>;

/// Each way to give a number stores it if it is one of the first, and 0 if it is one of the second.
template <typename Enumeration>
void ExpectStored(Numbers kept, Numbers refused)
{
    auto const expect = [](unsigned int given, unsigned int stored)
    {
        SCOPED_TRACE(given);
        EXPECT_EQ(Enumeration(Number(given)).GetValue(), stored);
        Enumeration assigned(NX_NO_CHANGE);
        assigned = Number(given);
        EXPECT_EQ(assigned.GetValue(), stored);
        assigned.SetNoChange();
        static_cast<nxEnum&>(assigned) = given;
        EXPECT_EQ(assigned.GetValue(), stored);
        assigned.SetNoChange();
        static_cast<nxEnum&>(assigned) = nxAnyEnum(given);
        EXPECT_EQ(assigned.GetValue(), stored);
    };
    for (unsigned int const number : kept)
        expect(number, number);
    for (unsigned int const number : refused)
        expect(number, 0);
}
} // namespace

TEST(nxEnumAssignment, KeepsWhatLiesBetweenTheBounds)
{
    ExpectStored<nxBuySellEnum>({0, 2, 11, 12}, {1, 10, 13, 5001, 1000002, 4294967295u});
    ExpectStored<nxPriceTypeEnum>({5801, 5819}, {5800, 5827}); // 5819 has no row
    ExpectStored<nxGenericEnum>({0, 1, 2, 999998}, {999999, 1000001});
    ExpectStored<nxSyntheticLegCalculationTypeEnum>({0, 2}, {8804, 9000, 9701, 9703, 10000});
    ExpectStored<nxErrorEnum>({1000030, 1999998}, {500, 1000000, 1999999});
    ExpectStored<nxTradingCapacityEnum>({2, 14401}, {14400, 14404});

    nxAnyEnum value; // the outcome is reported inside
    EXPECT_TRUE(value._Set(5u));
    EXPECT_FALSE(value._Set(4294967295u));
    EXPECT_EQ(value.GetValue(), 0u);
    EXPECT_TRUE(value._Set(NX_UNDEFINED));
    EXPECT_TRUE(value._Set(nxBuySellEnum(NX_NO_CHANGE)));
    EXPECT_TRUE(value.IsNoChange());
}

TEST(nxEnumAssignment, TakesNumbersPastTheBoolean)
{
    nxBoolEnum flag(true);
    EXPECT_EQ(flag, NX_TRUE);
    flag = 5002u;
    EXPECT_EQ(flag, NX_FALSE);
    flag = true;
    EXPECT_EQ(flag, 5001u);
    flag = NX_BUY;
    EXPECT_TRUE(flag.IsUndefined());
}

// A host may derive a class with wider bounds. The constructor goes by the constants of the library's class, an
// assignment by the bounds of the instance, and a copy by neither.
TEST(nxEnumAssignment, AsksADerivedClassForItsBounds)
{
    using Wider = nxWiderEnum<nxBuySellEnum>;
    EXPECT_EQ(Wider(Number(500)).GetValue(), 0u);
    Wider wider;
    wider = Number(500);
    EXPECT_EQ(wider.GetValue(), 500u);
    EXPECT_TRUE(wider.IsSpecificTypeForInstance());
    EXPECT_TRUE(wider.SetFromString("TRUE"));
    EXPECT_EQ(wider, NX_TRUE);

    nxBuySellEnum side(wider);
    EXPECT_EQ(side, NX_TRUE);
    side = NX_SELL;
    side = static_cast<nxBuySellEnum const&>(wider);
    EXPECT_EQ(side, NX_TRUE);
    static_cast<nxEnum&>(side) = wider;
    EXPECT_TRUE(side.IsUndefined());

    // Classes without an assignment of their own check even a copy of their own kind.
    nxWiderEnum<nxTradingCapacityEnum> widerCapacity;
    static_cast<nxEnum&>(widerCapacity) = 500u;
    nxTradingCapacityEnum capacity(widerCapacity);
    EXPECT_EQ(capacity.GetValue(), 500u);
    capacity = static_cast<nxTradingCapacityEnum const&>(widerCapacity);
    EXPECT_TRUE(capacity.IsUndefined());
}

TEST(nxEnumToken, OfAnotherClassClearsAndAnUnknownWordDoesNot)
{
    using namespace std::string_literals;
    using Row = std::tuple<std::string, bool, unsigned int>;
    for (auto const& [token, isTaken, stored] :
         {Row{"TRUE", true, 5001}, Row{"FALSE", true, 5002}, Row{"BUY", false, 0}, Row{"buy", false, 5002},
          Row{"True", false, 5002}, Row{" TRUE", false, 5002}, Row{"TRUE ", false, 5002},
          Row{"", false, 5002}, Row{"TRUE\0"s, false, 5002}, Row{"5001", false, 5002},
          Row{"UNDEFINED", true, 0}, Row{"NO_CHANGE", true, 2}, Row{"NOT_REGISTERED", false, 0},
          Row{"NOCHANGE", false, 0}, Row{"NX_ERR_NOT_FOUND", false, 0}})
    {
        nxBoolEnum flag(false);
        EXPECT_EQ(flag.SetFromString(token), isTaken) << token;
        EXPECT_EQ(flag.GetValue(), stored) << token;
        flag = false;
        EXPECT_EQ(flag.SetFromShortDescriptionString(token), isTaken) << token;
        EXPECT_EQ(flag.GetValue(), stored) << token;
    }
    nxGenericEnum any; // the one class that the unregistered row fits
    EXPECT_TRUE(any.SetFromString("NOT_REGISTERED"));
    EXPECT_EQ(any.GetValue(), 1u);
    EXPECT_FALSE(any.SetFromString("NX_ERR_NOT_FOUND"));
    EXPECT_EQ(any.GetValue(), 0u);

    nxSyntheticLegCalculationTypeEnum crossed(NX_NO_CHANGE); // its bounds keep out even its own rows
    EXPECT_FALSE(crossed.SetFromString("NX_SYNTHETIC_STRATEGY_LEG_CALCULATION_TYPE_YIELD"));
    EXPECT_TRUE(crossed.IsUndefined());
    EXPECT_TRUE(nxEnum::IsRegisteredEnumValue(9703));
    EXPECT_FALSE(Make<nxSyntheticLegCalculationTypeEnum>(9703).IsSpecificTypeForInstance());
}

TEST(nxEnumDescription, FallsBackToTheUnregisteredRow)
{
    using Row = std::tuple<unsigned int, std::string, std::string>;
    for (auto const& [number, token, text] :
         {Row{0, "UNDEFINED", "undefined"}, Row{1, "NOT_REGISTERED", "not registered"},
          Row{2, "NO_CHANGE", "no change"}, Row{11, "BUY", "Buy"},
          Row{5819, "NOT_REGISTERED", "not registered"}, Row{7005, "NOT_REGISTERED", "not registered"},
          Row{4294967295u, "NOT_REGISTERED", "not registered"}})
    {
        nxAnyEnum const value(number);
        EXPECT_EQ(value.GetShortDescription(), token);
        EXPECT_EQ(value.GetLongDescription(), text);
        EXPECT_EQ(value.GetEnumValue(), Number(number));
        EXPECT_EQ(&value.GetAsString(), &value.GetShortDescription()); // no copy is made
        EXPECT_EQ(nxEnum::IsRegisteredEnumValue(number), number == 1 || token != "NOT_REGISTERED");
    }
}

TEST(nxEnumListing, ReplacesTheContentInAscendingOrder)
{
    std::vector<nxEnumValue> values = {NX_BUY, NX_TRUE};
    nxSpreadChildOrderStateEnum().GetRegisteredEnumValuesForInstance(values);
    EXPECT_EQ(values, (std::vector{Number(7101), Number(7102), Number(7103), Number(7104), Number(7105),
                                   Number(7107), Number(7108)}));

    std::set<nxEnumValue> set = {NX_BUY};
    nxBoolEnum().GetRegisteredEnumValuesForInstance(set);
    EXPECT_EQ(set, (std::set{NX_TRUE, NX_FALSE}));

    // Rows of other classes lie between the crossed bounds, and must not be found.
    nxSyntheticLegCalculationTypeEnum().GetRegisteredEnumValuesForInstance(set);
    EXPECT_TRUE(set.empty());

    constexpr std::size_t errorRows = 581;
    constexpr std::size_t allRows = 3 + 1989 + 4;
    nxGenericEnum().GetRegisteredEnumValuesForInstance(values);
    EXPECT_EQ(values.size(), allRows - errorRows);
    EXPECT_EQ(values.front(), NX_UNDEFINED);
}

TEST(nxEnumComparison, IsByNumberWhateverTheClass)
{
    nxBuySellEnum const buy(NX_BUY);
    nxAnyEnum const eleven(11);
    EXPECT_TRUE(buy == eleven && eleven == buy && !(buy != eleven));
    EXPECT_TRUE(buy == NX_BUY && NX_BUY == buy && buy != NX_SELL);
    EXPECT_TRUE(buy == 11u && 11u == buy && buy != 12u);
    EXPECT_TRUE(buy != nxBoolEnum(true) && nxBoolEnum() == nxBuySellEnum());
    EXPECT_TRUE(buy < nxBuySellEnum(NX_SELL) && !(buy < buy));
    EXPECT_TRUE(nxBoolEnum(true) == true && false == nxBoolEnum(false) && nxBoolEnum(true) != false);
    EXPECT_TRUE(nxBoolEnum() != true && nxBoolEnum() != false);

    // A number is compared as it is: it must not be checked against the bounds first, which would make it 0.
    EXPECT_FALSE(nxBuySellEnum() == NX_TRUE);
    EXPECT_FALSE(nxErrorEnum() == NX_BUY);

    nxWiderEnum<nxBuySellEnum> wider;
    wider = NX_BUY;
    EXPECT_TRUE(wider == buy && buy == wider && wider == NX_BUY && wider == wider);

    nxCurrencyEnum const low(Number(1401));
    nxCurrencyEnum const high(Number(1402));
    EXPECT_TRUE(low < high && high > low && low <= high && high >= low && low <= low && low >= low);
    EXPECT_FALSE(high < low || low > high || high <= low || low >= high || low < low || low > low);
}

TEST(nxBuySellEnum, CodesSignsAndTheOverallSide)
{
    EXPECT_EQ(Words(&nxBuySellEnum::GetAsSingleCharacterCode), "0=  2=  11=B 12=S");
    EXPECT_EQ(Words(&nxBuySellEnum::GetSignString), "11=+ 12=-");
    nxWiderEnum<nxBuySellEnum> foreign;
    foreign = Number(500);
    EXPECT_EQ(foreign.GetSignString(), "-"); // any other number counts as a sale
    EXPECT_EQ(foreign.GetAsSingleCharacterCode(), ' ');

    nxEnumValue const rows[][3] = {// strategy, leg, overall
                                   {NX_BUY, NX_BUY, NX_BUY},
                                   {NX_BUY, NX_SELL, NX_SELL},
                                   {NX_SELL, NX_BUY, NX_SELL},
                                   {NX_SELL, NX_SELL, NX_BUY},
                                   {NX_UNDEFINED, NX_BUY, NX_UNDEFINED},
                                   {NX_SELL, NX_NO_CHANGE, NX_UNDEFINED},
                                   {NX_NO_CHANGE, NX_NO_CHANGE, NX_UNDEFINED}};
    for (auto const& [strategy, leg, overall] : rows)
        EXPECT_EQ(nxBuySellEnum::GetOverallBuySell(strategy, leg), overall);
}
