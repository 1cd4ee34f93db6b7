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
#include <unordered_set>

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

template <class Value>
std::string Shown(Value const& value)
{
    std::ostringstream stream;
    stream << value;
    return stream.str();
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
    ExpectHashToFollowEquality<nxRatio>({nxRatio(1, 2), nxRatio(2, 1), nxRatio(2, 4), nxRatio(1, 2)});
    ExpectHashToFollowEquality<nxDate>({nxDate(20240131U), nxDate(20240130U), nxDate(nxNullInitalizer())});
    nxDateTime later(1700000000);
    later.SetMicroseconds(1);
    ExpectHashToFollowEquality<nxDateTime>({nxDateTime(1700000000), nxDateTime(1700000001), later});
    ExpectHashToFollowEquality<nxVolume>({nxVolume(1), nxVolume(1), nxVolume(), nxVolume(0)});
    ExpectHashToFollowEquality<nxExchangePriceFilterBitMask>({1U, 2U, 3U, 1U});
}

TEST(nxStdHash, IsThatOfTheNumberWhateverTheClass)
{
    EXPECT_EQ(HashOf(nxBuySellEnum(NX_BUY)), HashOf(nxGenericEnum(NX_BUY)));
    std::unordered_set<nxBuySellEnum> const sides{NX_BUY, NX_SELL, NX_BUY};
    EXPECT_EQ(sides.size(), 2U);
}

TEST(nxStdStream, ShowsTokensAndLogForms)
{
    std::pair<std::string, char const*> const rows[] = {
        {Shown(nxBuySellEnum(NX_BUY)), "BUY"},
        {Shown(nxErrorEnum(NX_ERR_INVALID_PARAMETER)), "NX_ERR_INVALID_PARAMETER"},
        {Shown(nxExchangePriceFilterBitMask(5)), "BLOCK_TRADES NEW_PRODUCTS"},
        {Shown(nxDecimal("101.50")), "101.50"},
        {Shown(nxDecimal(nxNullInitalizer())), "NULL"},
        {Shown(nxMoney(nxDecimal("1.50"), NX_USD)), "1.50USD"},
        {Shown(nxExchangeRate(NX_USD, NX_EUR, nxDecimal("0.92"))), "USD:EUR=0.92"},
        {Shown(nxDate(20240131U)), "20240131"},
        {Shown(nxDate(nxNoChangeInitalizer())), "NO_CHANGE"},
        {Shown(nxTime(nxNullInitalizer())), "NULL"},
        {Shown(nxDateTime(2024, 1, 31, 9, 30, 15, 123000)), "31 Jan 2024 09:30:15.123"}, // not as a number
        {Shown(nxVolume()), "NULL"},
        {Shown(nxStringValue("text")), "text"},
        {Shown(nxDoubleValueWrapper(1.5)), "1.5"},
    };
    for (auto const& [shown, expected] : rows)
        EXPECT_EQ(shown, expected);
    std::ostringstream stream;
    stream << std::setw(8) << std::setfill('.') << nxDecimal("1.25") << '|';
    EXPECT_EQ(stream.str(), "....1.25|");
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
    nxDateTime moment(1700000000);
    moment.SetMicroseconds(123456);
    auto const point = nxStdChronoHelper::GetAsTimePoint(moment);
    ASSERT_TRUE(point);
    EXPECT_EQ(*point, std::chrono::system_clock::from_time_t(1700000000) + 123456us);
    EXPECT_EQ(nxStdChronoHelper::GetAsDateTime(*point), moment);

    nxTimeStamp const stamp = nxStdChronoHelper::GetAsTimeStamp(*point + 789ns);
    EXPECT_EQ(stamp.GetAsTimeValue(), 1700000000);
    EXPECT_EQ(stamp.GetNanoseconds(), 123456789U);
    EXPECT_EQ(nxStdChronoHelper::GetAsTimePoint(stamp), *point + 789ns);

    // Before the epoch the second below counts, and the fraction is never negative.
    nxTimeStamp const before = nxStdChronoHelper::GetAsTimeStamp(nxStdChronoHelper::TimePoint(-1ns));
    EXPECT_EQ(before.GetAsTimeValue(), -1);
    EXPECT_EQ(before.GetNanoseconds(), 999999999U);
}

TEST(nxStdChrono, HasNothingForWhatTheOtherSideCannotTell)
{
    EXPECT_FALSE(nxStdChronoHelper::GetAsTimePoint(nxDateTime(nxNullInitalizer())));
    EXPECT_FALSE(nxStdChronoHelper::GetAsTimePoint(nxDateTime(nxNoChangeInitalizer())));
    EXPECT_FALSE(nxStdChronoHelper::GetAsTimePoint(nxDateTime(std::numeric_limits<long long>::max())));
    EXPECT_FALSE(nxStdChronoHelper::GetAsTimePoint(nxTimeStamp(std::numeric_limits<long long>::min(), 0)));
    for (auto const second : {-1s, 0s, 1s})
        EXPECT_TRUE(nxStdChronoHelper::GetAsDateTime(nxStdChronoHelper::TimePoint(second)).IsNull());
    EXPECT_TRUE(nxStdChronoHelper::GetAsDateTime(nxStdChronoHelper::TimePoint(2s)).IsValid());
    // The last moments of the clock come back, or come back as nothing; none overflows.
    nxTimeStamp const last = nxStdChronoHelper::GetAsTimeStamp(nxStdChronoHelper::TimePoint::max());
    EXPECT_FALSE(nxStdChronoHelper::GetAsTimePoint(last));
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
