// What every enumeration does with numbers and tokens: its own, foreign and unknown ones. Also the exception
// that carries one.

#include "core/vocabulary/nxException.h"
#include "core/vocabulary/nxVocabulary.h"
#include "tests/vocabulary/nxAnyEnum.h"

#include <gtest/gtest.h>

#include <exception>
#include <set>
#include <type_traits>
#include <vector>

// One number beside the type.
static_assert(sizeof(nxBuySellEnum) <= 2 * sizeof(void*));
static_assert(sizeof(nxErrorEnum) == sizeof(nxBuySellEnum));
static_assert(!std::has_virtual_destructor_v<nxEnum>);
static_assert(!std::is_default_constructible_v<nxEnum> && !std::is_copy_constructible_v<nxEnum>);
static_assert(std::is_trivially_destructible_v<nxBuySellEnum>);
static_assert(std::is_same_v<std::underlying_type_t<nxEnumValue>, unsigned int>);
static_assert(!std::is_base_of_v<std::exception, nxException> && std::has_virtual_destructor_v<nxException>);
static_assert(std::is_convertible_v<nxErrorEnum, nxException> &&
              !std::is_default_constructible_v<nxException>);
// Of enumerators only: a number has to be named as one.
static_assert(std::is_convertible_v<nxEnumValue, nxBuySellEnum>);
static_assert(!std::is_constructible_v<nxBuySellEnum, unsigned int>);
static_assert(!std::is_constructible_v<nxBuySellEnum, nxBoolEnum>);
static_assert(std::is_same_v<decltype(nxBuySellEnum() = NX_BUY), nxBuySellEnum&>);
static_assert(std::is_same_v<decltype(nxBuySellEnum() = 11u), nxEnum const&>);

// A host may derive a class with wider bounds. The constructor goes by the constants of the library's class,
// an assignment by the bounds of the instance, and a copy by neither.
TEST(nxEnumAssignment, GoesByTheBounds)
{
    nxAnyEnum value;
    EXPECT_TRUE(value._Set(5u));
    EXPECT_FALSE(value._Set(4294967295u));
    EXPECT_EQ(value.GetValue(), 0u);
    EXPECT_TRUE(value._Set(NX_UNDEFINED) && value._Set(nxBuySellEnum(NX_NO_CHANGE)) && value.IsNoChange());

    using Wider = nxWiderEnum<nxBuySellEnum>;
    EXPECT_EQ(Wider(nxEnumValue(500)).GetValue(), 0u);
    Wider wider;
    wider = nxEnumValue(500);
    EXPECT_TRUE(wider == 500u && wider.IsSpecificTypeForInstance());
    EXPECT_TRUE(wider.SetFromString("TRUE"));
    nxBuySellEnum side(wider);
    EXPECT_EQ(side, NX_TRUE);
    side = NX_SELL;
    side = static_cast<nxBuySellEnum const&>(wider);
    EXPECT_EQ(side, NX_TRUE);
    side = nxEnumValue(13);
    EXPECT_TRUE(side.IsUndefined());
    side = NX_SELL;
    static_cast<nxEnum&>(side) = wider;
    EXPECT_TRUE(side.IsUndefined());

    // Classes without an assignment of their own check even a copy of their own kind.
    nxWiderEnum<nxTradingCapacityEnum> widerCapacity;
    static_cast<nxEnum&>(widerCapacity) = 50000u;
    nxTradingCapacityEnum capacity(widerCapacity);
    EXPECT_EQ(capacity.GetValue(), 50000u);
    capacity = static_cast<nxTradingCapacityEnum const&>(widerCapacity);
    EXPECT_TRUE(capacity.IsUndefined());
}

// More tokens are tried by the fuzz target of the vocabulary.
TEST(nxEnumToken, OfAnotherClassClearsAndAnUnknownWordDoesNot)
{
    nxBoolEnum flag(false);
    EXPECT_TRUE(!flag.SetFromString(std::string("TRUE\0", 5)) && flag == NX_FALSE);
    EXPECT_TRUE(!flag.SetFromString("BUY") && flag.IsUndefined());
    EXPECT_TRUE(flag.SetFromString("TRUE") && flag == NX_TRUE);
    nxGenericEnum any; // the one class that the unregistered row fits
    EXPECT_TRUE(any.SetFromString("NOT_REGISTERED") && any == 1u);
    EXPECT_EQ(nxAnyEnum(5819).GetLongDescription(), "not registered");
    EXPECT_EQ(&any.GetAsString(), &any.GetShortDescription()) << "no copy is made";
}

TEST(nxEnumListing, ReplacesTheContentInAscendingOrder)
{
    std::vector<nxEnumValue> values = {NX_BUY, NX_TRUE};
    nxSpreadChildOrderStateEnum().GetRegisteredEnumValuesForInstance(values);
    EXPECT_EQ(std::vector<unsigned int>(values.begin(), values.end()),
              (std::vector{7101u, 7102u, 7103u, 7104u, 7105u, 7107u, 7108u}));
    std::set<nxEnumValue> set = {NX_BUY};
    nxBoolEnum().GetRegisteredEnumValuesForInstance(set);
    EXPECT_EQ(set, (std::set{NX_TRUE, NX_FALSE}));
    // Rows of other classes lie between the crossed bounds, and must not be found.
    nxSyntheticLegCalculationTypeEnum().GetRegisteredEnumValuesForInstance(set);
    EXPECT_TRUE(set.empty());
    nxGenericEnum().GetRegisteredEnumValuesForInstance(values);
    EXPECT_EQ(values.size(), 3u + 1989 + 4 - 581); // all but the errors
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
    EXPECT_FALSE(nxBuySellEnum() == NX_TRUE || nxErrorEnum() == NX_BUY);

    nxWiderEnum<nxBuySellEnum> wider;
    wider = NX_BUY;
    EXPECT_TRUE(wider == buy && buy == wider && wider == NX_BUY && wider == wider);

    nxCurrencyEnum const low(nxEnumValue(1401));
    nxCurrencyEnum const high(nxEnumValue(1402));
    EXPECT_TRUE(low < high && high > low && low <= low && low >= low);
    EXPECT_FALSE(low > high || high <= low || low >= high || low < low || low > low);

    EXPECT_TRUE(nxErrorEnum().IsOK() &&
                nxErrorEnum(nxEnumValue(500)).IsOK()); // a refused number reads as success
    EXPECT_FALSE(nxErrorEnum(NX_NO_CHANGE).IsOK() || nxErrorEnum(NX_ERR_NOT_FOUND).IsOK());
}

TEST(nxException, IsAnErrorAndAText)
{
    nxException exception(nxErrorEnum{NX_ERR_INVALID_PARAMETER});
    exception.GetError() = NX_ERR_NOT_FOUND; // of a copy
    EXPECT_EQ(exception.GetError(), NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(exception.GetDescription(), "");
    exception.SetError(nxErrorEnum(NX_ERR_NOT_FOUND));
    exception.SetDescription("no such thing");
    nxException copy(nxErrorEnum{});
    EXPECT_EQ(&(copy = exception), &copy);
    EXPECT_EQ(copy.GetError(), NX_ERR_NOT_FOUND);
    EXPECT_EQ(copy.GetDescription(), "no such thing");
}
