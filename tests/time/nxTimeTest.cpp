// What a time of day shows, takes and refuses in each of its three states.

#include "core/time/nxTime.h"
#include "core/text/nxStringHelper.h"

#include <gtest/gtest.h>

#include <type_traits>

static_assert(!std::is_polymorphic_v<nxTime>);
static_assert(std::is_nothrow_destructible_v<nxTime>);

namespace
{

nxTime FromHHMMSS(unsigned int value)
{
    nxTime time;
    time.SetFromHHMMSS(value);
    return time;
}

} // namespace

TEST(nxTimeState, DefaultIsMidnightAndNotNull)
{
    nxTime const time;
    EXPECT_FALSE(time.IsNull());
    EXPECT_EQ(time.GetAsString(), "00:00:00");
    EXPECT_TRUE(nxTime(nxNullInitalizer{}).IsNull());
    EXPECT_TRUE(nxTime::GetNullInstance().IsNull());
    EXPECT_FALSE(nxTime(nxNoChangeInitalizer{}).IsNull());
    EXPECT_EQ(nxTime::GetSecondsInADay(), 86400u);
    EXPECT_EQ(nxTime(nxNullInitalizer{}).GetAsString(), "INVALID");
    EXPECT_EQ(nxTime(nxNullInitalizer{}).GetAsLogString(), "NULL");
    EXPECT_EQ(nxTime(nxNoChangeInitalizer{}).GetAsString(), "INVALID");
    EXPECT_EQ(nxTime(nxNoChangeInitalizer{}).GetAsLogString(), "INVALID");
    EXPECT_EQ(FromHHMMSS(93005).GetAsLogString(), "09:30:05");
}

TEST(nxTimeFields, RangeEndsAndRefusals)
{
    nxTime time = FromHHMMSS(123456);
    EXPECT_EQ(time.SetHour(24), NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(time.SetMinute(60), NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(time.SetSecond(60), NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(time.GetAsHHMMSS(), 123456u);
    EXPECT_TRUE(time.SetHour(23).IsOK());
    EXPECT_TRUE(time.SetMinute(59).IsOK());
    EXPECT_TRUE(time.SetSecond(0).IsOK());
    EXPECT_EQ(time.GetAsString(), "23:59:00");

    nxTime const odd = FromHHMMSS(256199); // any number is taken
    EXPECT_TRUE(odd.GetHour() == 25 && odd.GetMinute() == 61 && odd.GetSecond() == 99);
    EXPECT_EQ(odd.GetAsString(), "25:61:99");
    EXPECT_EQ(FromHHMMSS(4294967295u).GetAsString(), "429496:72:95");
    nxTime null(nxNullInitalizer{});
    null.SetFromHHMMSS(0);
    EXPECT_FALSE(null.IsNull());
}

// A setter leaves the status, so a null keeps a number that nobody reads back but GetAsHHMMSS() and comparisons.
TEST(nxTimeFields, ANullStaysNullAndHidesWhatWasSet)
{
    nxTime time(nxNullInitalizer{});
    EXPECT_TRUE(time.SetHour(9).IsOK());
    EXPECT_TRUE(time.IsNull());
    EXPECT_EQ(time.GetHour(), 0u);
    EXPECT_EQ(time.GetAsString(), "INVALID");
    EXPECT_EQ(time.GetAsHHMMSS(), 90000u);

    EXPECT_EQ(time.SetMinute(60), NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(time.GetAsHHMMSS(), 90000u) << "a refused value clears nothing";
    EXPECT_TRUE(time.SetMinute(30).IsOK());
    EXPECT_EQ(time.GetAsHHMMSS(), 3000u) << "the other two are cleared";
    EXPECT_EQ(time.SetFromString("9:30"), NX_ERR_INVALID_PARAMETER);
    EXPECT_EQ(time.GetAsHHMMSS(), 3000u);

    nxTime const copy(time);
    EXPECT_TRUE(copy.IsNull());
    EXPECT_EQ(copy.GetAsHHMMSS(), 0u) << "hidden numbers are not copied";
    nxTime assigned = FromHHMMSS(111111);
    assigned = time;
    EXPECT_EQ(assigned.GetAsHHMMSS(), 0u);
    time.SetNull();
    EXPECT_EQ(time.GetAsHHMMSS(), 0u);
}

TEST(nxTimeText, IsTheSameForTheStringHelper)
{
    nxTime time;
    EXPECT_TRUE(nxStringHelper::SetFromString("17:05", time).IsOK());
    EXPECT_EQ(nxStringHelper::SetFromString("17h05", time), NX_ERR_INVALID_PARAMETER);
    std::string text = "at ";
    nxStringHelper::AppendAsString(text, time);
    EXPECT_EQ(text, "at " + nxStringHelper::GetAsString(time));
    EXPECT_EQ(text, "at 17:05:00");
}

// Only a null on the left is special.
TEST(nxTimeComparison, LooksAtTheLeftStatusAlone)
{
    nxTime const midnight;
    nxTime const null(nxNullInitalizer{});
    nxTime const noChange(nxNoChangeInitalizer{});
    nxTime const noon = FromHHMMSS(120000);

    EXPECT_TRUE(null == nxTime(nxNullInitalizer{}) && midnight == null && noChange == null);
    EXPECT_TRUE(noChange == midnight && null != midnight);
    EXPECT_FALSE(null == midnight || midnight != null);
    EXPECT_TRUE(midnight >= null && noChange < noon && noon > null);
    EXPECT_FALSE(null >= null || null < noon || null > midnight);
    EXPECT_TRUE(FromHHMMSS(95959) < noon && noon > FromHHMMSS(115959) && noon >= FromHHMMSS(120000));
    EXPECT_FALSE(noon >= FromHHMMSS(120001));
}
