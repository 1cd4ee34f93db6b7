// Date-times and stamps beside the C library, over random moments from 1970 to 2100, half of them near a change of the
// clock. The zone is the one that the process is started in.

#include "core/time/nxDateTime.h"
#include "core/time/nxTimeStamp.h"
#include "core/vocabulary/nxException.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <functional>
#include <optional>
#include <random>
#include <vector>

namespace
{

constexpr long long secondsPerDay = 86400;
constexpr long long firstMoment = 2;         // below are the marks
constexpr long long lastMoment = 4133980799; // 2100-12-31 23:59:59
constexpr int moments = 100'000;

std::tm LocalFields(std::time_t moment)
{
    std::tm fields = {};
    localtime_r(&moment, &fields);
    return fields;
}

using Fields = std::array<int, 6>; // from the year to the second

Fields FieldsOf(std::tm const& fields)
{
    return {fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday,
            fields.tm_hour,        fields.tm_min,     fields.tm_sec};
}

Fields FieldsOf(nxDateTime const& moment)
{
    return {moment.GetYear(), moment.GetMonth(),  moment.GetDay(),
            moment.GetHour(), moment.GetMinute(), moment.GetSecond()};
}

// What the wall clock shows, counted as if it were Greenwich's.
long long WallClock(std::time_t moment)
{
    return moment + LocalFields(moment).tm_gmtoff;
}

std::string Format(char const* format, std::tm const& fields)
{
    char buffer[100];
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    return std::string(buffer, std::strftime(buffer, sizeof(buffer), format, &fields));
#pragma GCC diagnostic pop
}

// The first second with a new offset.
struct ClockChange
{
    long long moment;
    long long offsetBefore;
    long long offsetAfter;
};

std::vector<ClockChange> FindClockChanges()
{
    auto const offsetAt = [](long long moment) { return WallClock(moment) - moment; };
    std::vector<ClockChange> changes;
    constexpr long long reach =
        8 * 366 * secondsPerDay; // of setters and spans beyond the moments they start from
    for (long long day = -reach; day < lastMoment + reach; day += secondsPerDay)
    {
        long long before = day;
        long long after = day + secondsPerDay;
        if (offsetAt(before) == offsetAt(after))
            continue;
        while (after - before > 1)
        {
            long long const middle = (before + after) / 2;
            (offsetAt(middle) == offsetAt(day) ? before : after) = middle;
        }
        changes.push_back({after, offsetAt(before), offsetAt(after)});
    }
    return changes;
}

// The moment that a wall clock time means: the earliest at which the C library shows it, else what the offset before
// the gap makes of it. Tries every offset that the zone has ever had.
class Judge
{
public:
    Judge() : _changes(FindClockChanges()), _offsets{WallClock(0)}
    {
        for (ClockChange const& change : _changes)
            if (std::find(_offsets.begin(), _offsets.end(), change.offsetAfter) == _offsets.end())
                _offsets.push_back(change.offsetAfter);
    }

    std::vector<ClockChange> const& GetChanges() const
    {
        return _changes;
    }

    std::optional<long long> MomentOf(long long wallClock) const
    {
        std::optional<long long> earliest;
        for (long long const offset : _offsets)
        {
            long long const moment = wallClock - offset;
            if (WallClock(moment) == wallClock && (!earliest || moment < *earliest))
                earliest = moment;
        }
        for (ClockChange const& change : _changes)
            if (!earliest && wallClock >= change.moment + change.offsetBefore &&
                wallClock < change.moment + change.offsetAfter)
                return wallClock - change.offsetBefore;
        return earliest;
    }

private:
    std::vector<ClockChange> _changes;
    std::vector<long long> _offsets;
};

class nxZoneSweep : public testing::Test
{
protected:
    long long Random(long long from, long long to)
    {
        return std::uniform_int_distribution<long long>(from, to)(_random);
    }

    int RandomInt(int from, int to)
    {
        return static_cast<int>(Random(from, to));
    }

    long long RandomMoment()
    {
        std::vector<ClockChange> const& changes = _judge.GetChanges();
        if (changes.empty() || Random(0, 1) == 0)
            return Random(firstMoment, lastMoment);
        auto const which = static_cast<std::size_t>(Random(0, static_cast<long long>(changes.size()) - 1));
        long long const distance = Random(0, 3) == 0 ? 30 * 3600 : 2 * 3600;
        return std::clamp(changes[which].moment + Random(-distance, distance), firstMoment, lastMoment);
    }

    // Expects that `change` applied to the local fields of the moment means what it means to the C library.
    template <typename ChangeFields, typename ChangeDateTime>
    void ExpectSameMoment(long long start, ChangeFields&& changeFields, ChangeDateTime&& changeDateTime)
    {
        std::tm fields = LocalFields(start);
        changeFields(fields);
        long long const wallClock = timegm(&fields);
        std::optional<long long> const expected = _judge.MomentOf(wallClock);
        ASSERT_TRUE(expected.has_value()) << wallClock;
        nxDateTime moment(start);
        if (*expected < 0)
        {
            EXPECT_THROW(changeDateTime(moment), nxException);
            return;
        }
        changeDateTime(moment);
        ASSERT_EQ(moment.GetAsTimeValue(), *expected) << "from " << start << " to " << wallClock;
        std::tm const inRange = LocalFields(*expected);
        ASSERT_EQ(FieldsOf(moment), FieldsOf(inRange)) << start;
        ASSERT_EQ(moment.GetDayOfWeek(), inRange.tm_wday) << start;
    }

    Judge _judge;
    std::mt19937_64 _random{20241103};
};

} // namespace

TEST_F(nxZoneSweep, ReadersAndTexts)
{
    for (int i = 0; i != moments; ++i)
    {
        long long const seconds = RandomMoment();
        std::tm const fields = LocalFields(seconds);
        nxDateTime const moment(seconds);
        ASSERT_EQ(FieldsOf(moment), FieldsOf(fields)) << seconds;
        ASSERT_EQ(moment.GetDayOfWeek(), fields.tm_wday) << seconds;
        ASSERT_EQ(moment.GetQuarter().GetValue(), static_cast<unsigned int>(fields.tm_mon) / 3) << seconds;
        ASSERT_EQ(moment.GetAsString_Seconds(), Format("%d %b %Y %H:%M:%S", fields)) << seconds;
        ASSERT_EQ(moment.GetAsString("%c %Z %z"), Format("%c %Z %z", fields)) << seconds;
    }
}

TEST_F(nxZoneSweep, Stamps)
{
    for (int i = 0; i != moments; ++i)
    {
        long long const seconds = RandomMoment();
        auto const milliseconds = static_cast<unsigned int>(Random(0, 999));
        auto const microseconds = static_cast<unsigned int>(Random(0, 999));
        nxTimeStamp const stamp(seconds, (milliseconds * 1000 + microseconds) * 1000);
        auto const digits = [](unsigned int part) { return '.' + std::to_string(1000 + part).substr(1); };
        std::string const expected = Format("%d%b%y %H:%M:%S", LocalFields(seconds)) + digits(milliseconds);
        char fast[nxTimeStamp::fastStringSize];
        ASSERT_EQ(stamp.GetAsStringFast(fast, sizeof(fast)), 25u);
        ASSERT_EQ(fast, expected + digits(microseconds)) << seconds;
        ASSERT_EQ(stamp.GetAsString(), expected) << seconds;
    }
}

TEST_F(nxZoneSweep, SettersRollOver)
{
    struct Setter
    {
        int std::tm::*field;
        void (nxDateTime::*set)(int);
        int least;
        int most;
        int difference; // of the setter's number from the field's
    };
    constexpr Setter setters[] = {{&std::tm::tm_year, &nxDateTime::SetYear, 69, 199, 1900},
                                  {&std::tm::tm_mon, &nxDateTime::SetMonth, -30, 30, 1},
                                  {&std::tm::tm_mday, &nxDateTime::SetDay, -70, 400, 0},
                                  {&std::tm::tm_hour, &nxDateTime::SetHour, -100, 100, 0},
                                  {&std::tm::tm_min, &nxDateTime::SetMinute, -2000, 2000, 0},
                                  {&std::tm::tm_sec, &nxDateTime::SetSecond, -100000, 100000, 0}};
    for (int i = 0; i != moments; ++i)
    {
        Setter const& setter = setters[i % 6];
        int const value = RandomInt(setter.least, setter.most);
        ExpectSameMoment(
            RandomMoment(), [&](std::tm& fields) { fields.*setter.field = value; },
            [&](nxDateTime& moment) { (moment.*setter.set)(value + setter.difference); });
    }
}

TEST_F(nxZoneSweep, SpansAndDifferences)
{
    for (int i = 0; i != moments / 2; ++i)
    {
        int const sign = i % 2 == 0 ? 1 : -1;
        nxDateTimeSpan const span(RandomInt(-3, 3), RandomInt(-20, 20), RandomInt(-60, 60),
                                  RandomInt(-50, 50), RandomInt(-3000, 3000), RandomInt(-90000, 90000));
        ExpectSameMoment(
            RandomMoment(),
            [&](std::tm& fields)
            {
                fields.tm_year += sign * span.GetYears();
                fields.tm_mon += sign * span.GetMonths();
                fields.tm_mday += sign * span.GetDays();
                fields.tm_hour += sign * span.GetHours();
                fields.tm_min += sign * span.GetMinutes();
                fields.tm_sec += sign * span.GetSeconds();
            },
            [&](nxDateTime& moment) { moment = sign > 0 ? moment + span : moment - span; });

        long long const from = RandomMoment();
        long long const to = std::min(lastMoment, from + Random(0, 2'000'000'000));
        std::tm const fromFields = LocalFields(from);
        std::tm const toFields = LocalFields(to);
        nxDateTimeSpan const difference = nxDateTime(from).GetDifference(nxDateTime(to));
        ASSERT_EQ(difference.GetTotalSeconds(), to - from);
        Fields const subtrahend = FieldsOf(fromFields);
        Fields expected = FieldsOf(toFields);
        std::transform(expected.begin(), expected.end(), subtrahend.begin(), expected.begin(),
                       std::minus<int>());
        ASSERT_EQ((Fields{difference.GetYears(), difference.GetMonths(), difference.GetDays(),
                          difference.GetHours(), difference.GetMinutes(), difference.GetSeconds()}),
                  expected);
    }
}

TEST_F(nxZoneSweep, ISODatesFieldsAndGMT)
{
    for (int i = 0; i != moments / 2; ++i)
    {
        long long const seconds = RandomMoment();
        int const day = RandomInt(0, 31);
        ExpectSameMoment(
            seconds,
            [&](std::tm& fields)
            {
                fields.tm_mday = day;
                fields.tm_hour = fields.tm_min = fields.tm_sec = 0;
            },
            [&](nxDateTime& moment)
            {
                int const firstOfMonth = moment.GetAsISODate() / 100 * 100;
                moment.SetFromISODate(static_cast<unsigned int>(firstOfMonth + day));
            });

        ExpectSameMoment(
            seconds, [](std::tm&) {},
            [](nxDateTime& moment)
            {
                moment = nxDateTime(moment.GetYear(), moment.GetMonth(), moment.GetDay(), moment.GetHour(),
                                    moment.GetMinute(), moment.GetSecond(), 0);
            });

        std::time_t const time = seconds;
        std::tm gmt = {};
        gmtime_r(&time, &gmt);
        nxDateTime const asGMT = nxDateTime(seconds).GetAsGMT();
        ASSERT_EQ(asGMT.GetAsTimeValue(), seconds);
        ASSERT_EQ(asGMT.GetAsString("%c %Z"), Format("%c %Z", gmt)) << seconds;
    }
}
