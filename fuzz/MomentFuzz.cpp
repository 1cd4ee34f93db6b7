// Dates, times and moments from texts and fields, against the C library's calendar of Greenwich.

#include "fuzz/FuzzInput.h"

#include "core/time/nxDate.h"
#include "core/time/nxDateTime.h"
#include "core/time/nxTime.h"
#include "core/time/nxTimeStamp.h"
#include "core/vocabulary/nxException.h"

#include <time.h>

namespace
{
using Fields = std::array<int, 6>; // year, month, day, hour, minute, second

/// The fields as a count of seconds, or -1 for what the class refuses: before the epoch, no year of an int.
long long Count(Fields const& fields)
{
    auto const& [years, month, day, hour, minute, second] = fields;
    std::tm calendar{};
    // Years and months are folded first: the C library's own sum may overflow.
    long long const months = years * 12LL + month - 1;
    long long const year = (months >= 0 ? months : months - 11) / 12 - 1900;
    calendar.tm_year = static_cast<int>(year);
    calendar.tm_mon = static_cast<int>(months - (year + 1900) * 12);
    calendar.tm_mday = 1;
    long long const count = timegm(&calendar) + (day - 1LL) * 86400 + hour * 3600LL + minute * 60LL + second;
    time_t const check = count;
    return year != static_cast<int>(year) || count < 0 || gmtime_r(&check, &calendar) == nullptr ? -1 : count;
}

void CheckCalendar(nxDateTime const& moment, long long count)
{
    std::tm calendar{};
    time_t const value = count;
    gmtime_r(&value, &calendar);
    FUZZ_EQUAL(moment.GetAsTimeValue(), count);
    FUZZ_EQUAL(moment.GetYear(), static_cast<int>(static_cast<unsigned int>(calendar.tm_year) + 1900u));
    FUZZ_CHECK(moment.GetMonth() == calendar.tm_mon + 1 && moment.GetDay() == calendar.tm_mday);
    FUZZ_CHECK(moment.GetHour() == calendar.tm_hour && moment.GetMinute() == calendar.tm_min);
    FUZZ_CHECK(moment.GetSecond() == calendar.tm_sec && moment.GetDayOfWeek() == calendar.tm_wday);
    char text[80];
    std::strftime(text, sizeof text, "%d %b %Y %H:%M:%S", &calendar);
    FUZZ_EQUAL(moment.GetAsString_Seconds(), text);
    FUZZ_CHECK(moment.GetAsGMT() == moment);
}

/// Digits, or with `allowsMinus` a minus and digits; the number wraps.
bool Read(std::string const& digits, bool allowsMinus, int& value)
{
    std::string const text = digits.c_str(); // a zero byte ends it
    bool const isNegative = allowsMinus && text.starts_with('-');
    value = std::atoi(text.c_str());
    return FuzzIsDigits(text.substr(isNegative)) && text != "-";
}

void CheckMomentText(std::string const& text)
{
    std::string const trimmed = FuzzTrim(text);
    Fields fields{};
    int microseconds = 0;
    bool sound = trimmed.size() == 17 || trimmed.size() == 24;
    constexpr std::size_t places[][2] = {{0, 4}, {4, 2}, {6, 2}, {9, 2}, {12, 2}, {15, 2}};
    for (unsigned int i = 0; sound && i < 6; ++i)
        sound = Read(trimmed.substr(places[i][0], places[i][1]), true, fields[i]);
    if (sound && trimmed.size() == 24)
        sound = Read(trimmed.substr(18), false, microseconds);
    long long const count = sound ? Count(fields) : -1;

    nxDateTime moment;
    nxErrorEnum const result = nxDateTime::SetFromString(text, moment);
    FUZZ_CHECK(count >= 0 ? result.IsOK() : moment.IsNull() && result == NX_ERR_INVALID_PARAMETER);
    if (count >= 0)
        CheckCalendar(moment, count);
    FUZZ_CHECK(count < 0 || moment.GetMicroseconds() == static_cast<unsigned int>(microseconds));
}

void CheckTimeText(std::string const& text)
{
    bool sound = text.size() == 8 || text.size() == 5;
    for (std::size_t i = 0; sound && i < text.size(); ++i)
        sound = i % 3 == 2 ? text[i] == ':' : FuzzIsDigits({text[i]});
    unsigned int parts[3]{};
    (void)std::sscanf(text.c_str(), "%2u:%2u:%2u", &parts[0], &parts[1], &parts[2]);
    sound = sound && parts[0] < 24 && parts[1] < 60 && parts[2] < 60;

    nxTime time(nxNullInitalizer{});
    FUZZ_EQUAL(time.SetFromString(text).IsOK(), sound);
    FUZZ_EQUAL(time.IsNull(), !sound);
    if (!sound)
        return;
    FUZZ_EQUAL(time.GetAsString(), text.size() == 8 ? text : text + ":00");
    FUZZ_EQUAL(time.GetAsHHMMSS(), parts[0] * 10000 + parts[1] * 100 + parts[2]);
    FUZZ_CHECK(time.GetHour() == parts[0] && time.GetMinute() == parts[1] && time.GetSecond() == parts[2]);
}

void CheckDateText(std::string const& text, std::string const& format)
{
    int ignored = 0;
    bool const sound = !text.empty() && Read(text, false, ignored);
    nxDate date(20240131u);
    FUZZ_EQUAL(date.SetFromString(text).IsOK(), sound);
    FUZZ_CHECK(sound || date.GetAsString() == "20240131");
    FUZZ_EQUAL(date.GetAsString().empty(), !date.IsValid());
    FUZZ_CHECK(date.GetAsLogString(format).size() < 1024);
}

/// What finds a moment from fields throws for one that there is not, and then changes nothing.
template <class ActionT>
void CheckChange(nxDateTime& moment, Fields const& fields, ActionT action)
{
    nxDateTime const before = moment;
    long long const count = Count(fields);
    try
    {
        action();
        FUZZ_CHECK(count >= 0);
        CheckCalendar(moment, count);
    }
    catch (nxException const&)
    {
        FUZZ_CHECK(count < 0 && moment == before);
    }
}

void CheckFields(FuzzInput& input)
{
    auto const small = [&input] { return static_cast<int>(input.Take<short>()); };
    Fields fields{1970 + small() % 2000, small(), small(), small(), small(), small()};
    nxDateTime moment(2'000'000'000LL);
    auto const make = [](auto... numbers) { return nxDateTime(numbers..., 7); };
    CheckChange(moment, fields, [&] { moment = std::apply(make, fields); });
    int const number = small();
    fields = {moment.GetYear() + number % 1000, moment.GetMonth() + number, moment.GetDay() - number,
              moment.GetHour() + number,        moment.GetMinute(),         moment.GetSecond()};
    nxDateTimeSpan const span(number % 1000, number, -number, number, 0, 0);
    CheckChange(moment, fields, [&] { moment += span; });
    fields = {moment.GetYear(), moment.GetMonth(),  moment.GetDay(),
              moment.GetHour(), moment.GetMinute(), number};
    CheckChange(moment, fields, [&] { moment.SetSecond(number); });
}

/// Any count of seconds has a calendar or turns null; any number makes no harm as a date.
void CheckNumbers(FuzzInput& input, std::string const& format)
{
    auto const value = input.Take<long long>();
    nxDateTime const moment(value);
    int const year = moment.GetYear();
    if (!moment.IsNull() && value >= 0)
        CheckCalendar(moment, value);
    FUZZ_CHECK(moment.GetAsString(format).size() < 1024 && (year != 0 || moment.IsNull() || value < 0));
    char text[nxTimeStamp::fastStringSize];
    nxTimeStamp const stamp(value, input.Take<unsigned int>() % 1'000'000'000);
    auto const written = stamp.GetAsStringFast(text, sizeof text);
    FUZZ_CHECK(written == 0 || std::strlen(text) == written - 1);
    auto const date = input.Take<unsigned int>();
    auto const digits = static_cast<int>(date);
    nxDateTime day(nxNullInitalizer{});
    if (digits >= 10000000 && digits <= 99999999)
        CheckChange(day, {digits / 10000, digits / 100 % 100, digits % 100, 0, 0, 0},
                    [&] { day.SetFromISODate(date); });
}
} // namespace

void FuzzOne(FuzzInput& input)
{
    std::string const text = input.Text();
    std::string const format = input.Text();
    CheckMomentText(text);
    CheckTimeText(text);
    CheckDateText(text, format);
    CheckFields(input);
    CheckNumbers(input, format);
}
