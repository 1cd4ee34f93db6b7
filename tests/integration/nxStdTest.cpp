// How values of the library look to the standard library: as keys, on streams, in formats and as moments of chrono.

#include "core/integration/nxStdChrono.h"
#include "core/integration/nxStdFormat.h"
#include "core/integration/nxStdHash.h"
#include "core/integration/nxStdStream.h"
#include "core/vocabulary/nxBuySellEnum.h"
#include "core/vocabulary/nxExchangePriceFilterBitMask.h"
#include "core/vocabulary/nxGenericEnum.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <limits>
#include <sstream>
#include <tuple>

namespace
{
using namespace std::chrono_literals;

template <class Value>
concept Hashable = requires(Value const& value)
{
    std::hash<Value>()(value);
};
static_assert(Hashable<nxBuySellEnum> && Hashable<nxErrorEnum> && Hashable<nxExchangePriceFilterBitMask>);
static_assert(!Hashable<nxTime> && !Hashable<nxDoubleValueWrapper>); // whose == is no equivalence

// A growing vector of a host's structures moves their texts only where no member's move can throw; else it copies them.
template <class... Values>
constexpr bool moveWithoutThrowing = ((std::is_nothrow_move_constructible_v<Values> &&
                                       std::is_nothrow_move_assignable_v<Values>)&&...);
static_assert(
    moveWithoutThrowing<nxDateTime, nxTime, nxDate, nxTimeStamp, nxDecimal, nxMoney, nxRatio, nxStringValue>);

template <class Value>
std::size_t HashOf(Value const& value)
{
    return std::hash<Value>()(value);
}

/// Equal values have equal hashes; of the unequal ones here none share a hash.
template <class Value>
void ExpectHashToFollowEquality(std::initializer_list<Value> values)
{
    for (Value const& left : values)
        for (Value const& right : values)
            EXPECT_EQ(left == right, HashOf(left) == HashOf(right)) << left << " and " << right;
}
} // namespace

TEST(nxStdHash, FollowsEquality)
{
    nxDecimal const half("1.5");
    nxDecimal const again("1.50");
    ExpectHashToFollowEquality<nxDecimal>(
        {half, again, nxDecimal("0"), nxDecimal("0.00"), nxDecimal("-0.1"), nxNullInitalizer()});
    ExpectHashToFollowEquality<nxMoney>(
        {nxMoney(half, NX_USD), nxMoney(again, NX_USD), nxMoney(half, NX_EUR), nxMoney::GetNullMoney()});
    nxRatio keeping;
    keeping.SetValue(0, 5); // a null whose numbers don't count
    nxRatio noChange;
    noChange.SetNoChange();
    ExpectHashToFollowEquality<nxRatio>(
        {nxRatio(1, 2), nxRatio(2, 1), nxRatio(2, 4), nxRatio(1, 2), nxRatio(), keeping, noChange});
    ExpectHashToFollowEquality<nxDate>({nxDate(20240131U), nxDate(20240130U), nxDate(nxNullInitalizer())});
    nxDateTime later(1700000000);
    later.SetMicroseconds(1);
    ExpectHashToFollowEquality<nxDateTime>({nxDateTime(1700000000), nxDateTime(1700000001), later});
    ExpectHashToFollowEquality<nxVolume>({nxVolume(1), nxVolume(1), nxVolume(), nxVolume(0)});
    ExpectHashToFollowEquality<nxExchangePriceFilterBitMask>({1U, 2U, 3U, 1U});
    ExpectHashToFollowEquality<nxBuySellEnum>({NX_BUY, NX_SELL, NX_BUY});
    EXPECT_EQ(HashOf(nxBuySellEnum(NX_BUY)), HashOf(nxGenericEnum(NX_BUY))); // whatever the class
}

TEST(nxStdStream, ShowsTokensAndLogForms)
{
    std::ostringstream stream;
    stream << nxBuySellEnum(NX_BUY) << '|' << nxExchangePriceFilterBitMask(5) << '|' << nxDecimal("101.50")
           << '|' << nxMoney(nxDecimal("1.50"), NX_USD) << '|'
           << nxExchangeRate(NX_USD, NX_EUR, nxDecimal("0.92")) << '|' << nxDate(20240131U) << '|'
           << nxDate(nxNoChangeInitalizer()) << '|' << nxTime(nxNullInitalizer()) << '|'
           << nxDateTime(2024, 1, 31, 9, 30, 15, 123000) << '|' // not as a number
           << nxVolume() << '|' << nxStringValue("text") << '|' << nxDoubleValueWrapper(1.5) << '|'
           << std::setw(8) << std::setfill('.') << nxDecimal("1.25");
    EXPECT_EQ(stream.str(),
              "BUY|BLOCK_TRADES NEW_PRODUCTS|101.50|1.50USD|USD:EUR=0.92|20240131|NO_CHANGE|NULL|"
              "31 Jan 2024 09:30:15.123|NULL|text|1.5|....1.25");
}

#ifdef __cpp_lib_format
TEST(nxStdFormat, ShowsTheSameAsAStreamInTheFormOfATextsFormat)
{
    EXPECT_EQ(std::format("{:<4}|{:>7}|{}", nxBuySellEnum(NX_BUY), nxDecimal("1.25"), nxVolume()),
              "BUY |   1.25|NULL");
}
#endif

TEST(nxStdChrono, TellsTheSameMoment)
{
    using Helper = nxStdChronoHelper;
    using Second = std::numeric_limits<long long>;
    nxDateTime moment(1700000000);
    moment.SetMicroseconds(123456);
    auto const point = Helper::TimePoint(1700000000s + 123456us);
    EXPECT_EQ(Helper::GetAsTimePoint(moment), point);
    EXPECT_EQ(Helper::GetAsDateTime(point), moment);

    // Before the epoch the second below counts, and the fraction is never negative.
    for (auto const& [nanoseconds, second, fraction] :
         {std::tuple{1700000000s + 123456789ns, 1700000000, 123456789U}, {-1ns, -1, 999999999U}})
    {
        nxTimeStamp const stamp = Helper::GetAsTimeStamp(Helper::TimePoint(nanoseconds));
        EXPECT_EQ(stamp.GetAsTimeValue(), second);
        EXPECT_EQ(stamp.GetNanoseconds(), fraction);
        EXPECT_EQ(Helper::GetAsTimePoint(stamp), Helper::TimePoint(nanoseconds));
    }
    // What the other side can't tell.
    for (nxDateTime const& none :
         {nxDateTime(nxNullInitalizer()), nxDateTime(nxNoChangeInitalizer()), nxDateTime(Second::max())})
        EXPECT_FALSE(Helper::GetAsTimePoint(none)) << none;
    EXPECT_FALSE(Helper::GetAsTimePoint(nxTimeStamp(Second::min(), 0)));
    for (auto const second : {-1s, 0s, 1s, 2s})
        EXPECT_EQ(Helper::GetAsDateTime(Helper::TimePoint(second)).IsNull(), second < 2s) << second.count();
    // The last moments of the clock come back, or come back as nothing; none overflows.
    EXPECT_FALSE(Helper::GetAsTimePoint(Helper::GetAsTimeStamp(Helper::TimePoint::max())));
}

TEST(nxStdChrono, TellsTheSameDay)
{
    using namespace std::chrono;
    EXPECT_EQ(nxStdChronoHelper::GetAsYearMonthDay(nxDate(20240229U)), 2024y / February / 29);
    for (unsigned int const number : {20240229U, 19700101U, 99991231U, 101U})
        EXPECT_EQ(nxStdChronoHelper::GetAsDate(nxStdChronoHelper::GetAsYearMonthDay(nxDate(number)).value()),
                  nxDate(number));
    for (unsigned int const number : {20240230U, 20241301U, 0U, 240131000U, 4294967290U, 4294967295U})
        EXPECT_FALSE(nxStdChronoHelper::GetAsYearMonthDay(nxDate(number))) << number;
    for (year_month_day const day : {2023y / February / 29, year(-1) / January / 1, year(10000) / May / 1})
        EXPECT_TRUE(nxStdChronoHelper::GetAsDate(day).IsNull());
}
