// What every enumeration does with numbers and tokens: its own, foreign and unknown ones.

#include "core/vocabulary/nxVocabulary.h"
#include "tests/vocabulary/nxAnyEnum.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <type_traits>
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

struct Stored
{
    unsigned int given;
    unsigned int stored;
};

template <typename Enumeration, std::size_t count>
void ExpectStored(Stored const (&rows)[count])
{
    for (Stored const& row : rows)
    {
        SCOPED_TRACE(row.given);
        EXPECT_EQ(Enumeration(Number(row.given)).GetValue(), row.stored);

        Enumeration assigned;
        assigned.SetNoChange();
        assigned = Number(row.given);
        EXPECT_EQ(assigned.GetValue(), row.stored);

        assigned.SetNoChange();
        static_cast<nxEnum&>(assigned) = row.given;
        EXPECT_EQ(assigned.GetValue(), row.stored);

        assigned.SetNoChange();
        static_cast<nxEnum&>(assigned) = nxAnyEnum(row.given);
        EXPECT_EQ(assigned.GetValue(), row.stored);
    }
}
} // namespace

TEST(nxEnumAssignment, KeepsWhatLiesBetweenTheBounds)
{
    constexpr Stored sides[] = {{0, 0},   {1, 0},  {2, 2},    {10, 0},      {11, 11},
                                {12, 12}, {13, 0}, {5001, 0}, {1000002, 0}, {4294967295u, 0}};
    ExpectStored<nxBuySellEnum>(sides);

    constexpr Stored priceTypes[] = {{5800, 0}, {5801, 5801}, {5819, 5819}, {5827, 0}}; // 5819 has no row
    ExpectStored<nxPriceTypeEnum>(priceTypes);

    constexpr Stored anything[] = {{0, 0}, {1, 1}, {2, 2}, {999998, 999998}, {999999, 0}, {1000001, 0}};
    ExpectStored<nxGenericEnum>(anything);

    constexpr Stored crossed[] = {{0, 0}, {2, 2}, {8804, 0}, {9000, 0}, {9701, 0}, {9703, 0}, {10000, 0}};
    ExpectStored<nxSyntheticLegCalculationTypeEnum>(crossed);

    constexpr Stored errors[] = {
        {500, 0}, {1000000, 0}, {1000030, 1000030}, {1999998, 1999998}, {1999999, 0}};
    ExpectStored<nxErrorEnum>(errors);

    constexpr Stored capacities[] = {{14400, 0}, {14401, 14401}, {14404, 0}, {2, 2}};
    ExpectStored<nxTradingCapacityEnum>(capacities);
}

TEST(nxEnumAssignment, ReportsTheOutcomeInside)
{
    nxAnyEnum value;
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
}

// Classes without an assignment of their own check even a copy of their own kind.
TEST(nxEnumAssignment, ChecksCopiesOfPlainClasses)
{
    nxWiderEnum<nxTradingCapacityEnum> wider;
    static_cast<nxEnum&>(wider) = 500u;
    EXPECT_EQ(wider.GetValue(), 500u);
    nxTradingCapacityEnum capacity(wider);
    EXPECT_EQ(capacity.GetValue(), 500u);
    capacity = static_cast<nxTradingCapacityEnum const&>(wider);
    EXPECT_TRUE(capacity.IsUndefined());
}

TEST(nxEnumToken, OfAnotherClassClearsAndAnUnknownWordDoesNot)
{
    struct Row
    {
        char const* token;
        bool isTaken;
        unsigned int stored;
    };
    constexpr Row rows[] = {
        {"TRUE", true, 5001},   {"FALSE", true, 5002},
        {"BUY", false, 0},      {"buy", false, 5002},
        {"True", false, 5002},  {" TRUE", false, 5002},
        {"TRUE ", false, 5002}, {"", false, 5002},
        {"5001", false, 5002},  {"UNDEFINED", true, 0},
        {"NO_CHANGE", true, 2}, {"NOT_REGISTERED", false, 0},
        {"NOCHANGE", false, 0}, {"NX_ERR_NOT_FOUND", false, 0},
    };
    for (Row const& row : rows)
    {
        nxBoolEnum flag(false);
        EXPECT_EQ(flag.SetFromString(row.token), row.isTaken) << row.token;
        EXPECT_EQ(flag.GetValue(), row.stored) << row.token;

        flag = false;
        EXPECT_EQ(flag.SetFromShortDescriptionString(row.token), row.isTaken) << row.token;
        EXPECT_EQ(flag.GetValue(), row.stored) << row.token;
    }
    nxBoolEnum flag(false);
    EXPECT_FALSE(flag.SetFromString(std::string("TRUE\0", 5)));
    EXPECT_EQ(flag, NX_FALSE);
}

TEST(nxEnumToken, OfTheUnregisteredRowFitsOnlyTheGenericClass)
{
    nxGenericEnum any;
    EXPECT_TRUE(any.SetFromString("NOT_REGISTERED"));
    EXPECT_EQ(any.GetValue(), 1u);
    EXPECT_FALSE(any.SetFromString("NX_ERR_NOT_FOUND"));
    EXPECT_EQ(any.GetValue(), 0u);
}

TEST(nxEnumToken, OfCrossedBoundsIsKnownAndRefused)
{
    nxSyntheticLegCalculationTypeEnum type;
    type.SetNoChange();
    EXPECT_FALSE(type.SetFromString("NX_SYNTHETIC_STRATEGY_LEG_CALCULATION_TYPE_YIELD"));
    EXPECT_TRUE(type.IsUndefined());
    EXPECT_TRUE(nxEnum::IsRegisteredEnumValue(9703));
    EXPECT_FALSE(nxSyntheticLegCalculationTypeEnum(Number(9703)).IsSpecificTypeForInstance());
}

TEST(nxEnumDescription, FallsBackToTheUnregisteredRow)
{
    struct Row
    {
        unsigned int number;
        char const* token;
        char const* text;
    };
    constexpr Row rows[] = {
        {0, "UNDEFINED", "undefined"},
        {1, "NOT_REGISTERED", "not registered"},
        {2, "NO_CHANGE", "no change"},
        {11, "BUY", "Buy"},
        {5819, "NOT_REGISTERED", "not registered"},
        {7005, "NOT_REGISTERED", "not registered"},
        {4294967295u, "NOT_REGISTERED", "not registered"},
    };
    for (Row const& row : rows)
    {
        nxAnyEnum const value(row.number);
        EXPECT_EQ(value.GetShortDescription(), row.token);
        EXPECT_EQ(value.GetLongDescription(), row.text);
        EXPECT_EQ(value.GetEnumValue(), Number(row.number));
        EXPECT_EQ(&value.GetAsString(), &value.GetShortDescription()); // no copy is made
        EXPECT_EQ(nxEnum::IsRegisteredEnumValue(row.number), row.number == 1 || row.token[2] != 'T');
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

    // A number is compared as it is: it must not be checked against the bounds first, which would make it 0.
    EXPECT_FALSE(nxBuySellEnum() == NX_TRUE);
    EXPECT_FALSE(nxErrorEnum() == NX_BUY);

    nxWiderEnum<nxBuySellEnum> wider;
    wider = NX_BUY;
    EXPECT_TRUE(wider == buy && buy == wider && wider == NX_BUY && wider == wider);
}

TEST(nxEnumComparison, OfABooleanIsWithItsTruth)
{
    EXPECT_TRUE(nxBoolEnum(true) == true && false == nxBoolEnum(false) && nxBoolEnum(true) != false);
    EXPECT_TRUE(nxBoolEnum() != true && nxBoolEnum() != false);
}

TEST(nxEnumComparison, OfCurrenciesIsAFullOrder)
{
    nxCurrencyEnum const low(Number(1401));
    nxCurrencyEnum const high(Number(1402));
    EXPECT_TRUE(low < high && high > low && low <= high && high >= low && low <= low && low >= low);
    EXPECT_FALSE(high < low || low > high || high <= low || low >= high || low < low || low > low);
}

TEST(nxBuySellEnumCodes, AreForBothSidesOnly)
{
    struct Row
    {
        unsigned int number;
        char code;
        char const* sign;
    };
    for (Row const& row : {Row{11, 'B', "+"}, Row{12, 'S', "-"}, Row{0, ' ', ""}, Row{2, ' ', ""}})
    {
        EXPECT_EQ(nxBuySellEnum(Number(row.number)).GetAsSingleCharacterCode(), row.code);
        EXPECT_EQ(nxBuySellEnum(Number(row.number)).GetSignString(), row.sign);
    }
    nxWiderEnum<nxBuySellEnum> foreign;
    foreign = Number(500);
    EXPECT_EQ(foreign.GetSignString(), "-"); // any other number counts as a sale
    EXPECT_EQ(foreign.GetAsSingleCharacterCode(), ' ');
}

TEST(nxBuySellEnumOverall, IsBuyForTwoSales)
{
    struct Row
    {
        nxEnumValue strategy;
        nxEnumValue leg;
        nxEnumValue overall;
    };
    constexpr Row rows[] = {
        {NX_BUY, NX_BUY, NX_BUY},
        {NX_BUY, NX_SELL, NX_SELL},
        {NX_SELL, NX_BUY, NX_SELL},
        {NX_SELL, NX_SELL, NX_BUY},
        {NX_UNDEFINED, NX_BUY, NX_UNDEFINED},
        {NX_SELL, NX_NO_CHANGE, NX_UNDEFINED},
        {NX_NO_CHANGE, NX_NO_CHANGE, NX_UNDEFINED},
    };
    for (Row const& row : rows)
        EXPECT_EQ(nxBuySellEnum::GetOverallBuySell(row.strategy, row.leg), row.overall);
}
