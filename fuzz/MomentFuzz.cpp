// Dates, times and moments from texts and fields, against the C library's calendar of Greenwich.

#include "fuzz/FuzzInput.h"

#include "core/time/nxDate.h"
#include "core/time/nxDateTime.h"
#include "core/time/nxTime.h"
#include "core/time/nxTimeStamp.h"
#include "core/vocabulary/nxException.h"

#include <limits>
#include <time.h>

namespace
{
struct Fields
{
    int year, month, day, hour, minute, second;
};

/// The fields as a count of seconds, or -1 for what the class refuses: before the epoch, or no year of an int.
long long Count(Fields const& fields)
{
    std::tm calendar{};
    // Years and months are folded first: the C library's own sum may overflow.
    long long const months = static_cast<long long>(fields.year) * 12 + fields.month - 1;
    long long const year = (months >= 0 ? months : months - 11) / 12 - 1900;
    if (year < std::numeric_limits<int>::min() || year > std::numeric_limits<int>::max())
        return -1;
    calendar.tm_year = static_cast<int>(year);
    calendar.tm_mon = static_cast<int>(months - (year + 1900) * 12);
    calendar.tm_mday = 1;
    long long const start = timegm(&calendar);
    long long const count =
        start + (fields.day - 1LL) * 86400 + fields.hour * 3600LL + fields.minute * 60LL + fields.second;
    auto const check = static_cast<time_t>(count);
    return count < 0 || gmtime_r(&check, &calendar) == nullptr ? -1 : count;
}

void CheckCalendar(nxDateTime const& moment, long long count)
{
    std::tm calendar{};
    auto const value = static_cast<time_t>(count);
    gmtime_r(&value, &calendar);
    FUZZ_EQUAL(moment.GetAsTimeValue(), count);
    FUZZ_EQUAL(moment.GetYear(), static_cast<int>(static_cast<unsigned int>(calendar.tm_year) + 1900u));
    FUZZ_EQUAL(moment.GetMonth(), calendar.tm_mon + 1);
    FUZZ_EQUAL(moment.GetDay(), calendar.tm_mday);
    FUZZ_EQUAL(moment.GetHour(), calendar.tm_hour);
    FUZZ_EQUAL(moment.GetMinute(), calendar.tm_min);
    FUZZ_EQUAL(moment.GetSecond(), calendar.tm_sec);
    FUZZ_EQUAL(moment.GetDayOfWeek(), calendar.tm_wday);
    char text[80];
    std::strftime(text, sizeof text, "%d %b %Y %H:%M:%S", &calendar);
    FUZZ_EQUAL(moment.GetAsString_Seconds(), std::string(text));
    FUZZ_EQUAL(moment.GetAsGMT() == moment, true);
}

/// Digits, or with `allowsMinus` a minus and digits; the number wraps.
bool Read(std::string const& digits, bool allowsMinus, int& value)
{
    std::string const text = digits.c_str(); // a zero byte ends it
    bool const negative = allowsMinus && text.starts_with('-');
    std::string const magnitude = text.substr(negative ? 1 : 0);
    if (magnitude.find_first_not_of("0123456789") != std::string::npos || (negative && magnitude.empty()))
        return false;
    value = std::atoi(magnitude.c_str()) * (negative ? -1 : 1);
    return true;
}

void CheckMomentText(std::string const& text)
{
    constexpr char const blanks[] = " \t\n\r";
    std::size_t const first = text.find_first_not_of(blanks);
    std::string const trimmed =
        first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(blanks) - first + 1);
    Fields fields{};
    int microseconds = 0;
    bool sound = trimmed.size() == 17 || trimmed.size() == 24;
    constexpr std::size_t places[][2] = {{0, 4}, {4, 2}, {6, 2}, {9, 2}, {12, 2}, {15, 2}};
    int* const numbers[] = {&fields.year, &fields.month,  &fields.day,
                            &fields.hour, &fields.minute, &fields.second};
    for (unsigned int i = 0; sound && i < 6; ++i)
        sound = Read(trimmed.substr(places[i][0], places[i][1]), true, *numbers[i]);
    if (sound && trimmed.size() == 24)
        sound = Read(trimmed.substr(18), false, microseconds);
    long long const count = sound ? Count(fields) : -1;

    nxDateTime moment;
    nxErrorEnum const result = nxDateTime::SetFromString(text, moment);
    FUZZ_EQUAL(result.IsOK(), count >= 0);
    if (count < 0)
    {
        FUZZ_CHECK(moment.IsNull() && result == NX_ERR_INVALID_PARAMETER);
        return;
    }
    CheckCalendar(moment, count);
    FUZZ_EQUAL(moment.GetMicroseconds(), static_cast<unsigned int>(microseconds));
}

void CheckTimeText(std::string const& text)
{
    bool sound = text.size() == 8 || text.size() == 5;
    for (std::size_t i = 0; sound && i < text.size(); ++i)
        sound = i % 3 == 2 ? text[i] == ':' : text[i] >= '0' && text[i] <= '9';
    unsigned int parts[3]{};
    for (std::size_t i = 0; sound && i * 3 < text.size(); ++i)
        parts[i] = static_cast<unsigned int>(std::stoi(text.substr(i * 3, 2)));
    sound = sound && parts[0] < 24 && parts[1] < 60 && parts[2] < 60;

    nxTime time(nxNullInitalizer{});
    FUZZ_EQUAL(time.SetFromString(text).IsOK(), sound);
    FUZZ_EQUAL(time.IsNull(), !sound);
    if (!sound)
        return;
    FUZZ_EQUAL(time.GetAsString(), text.size() == 8 ? text : text + ":00");
    nxTime again(nxNullInitalizer{});
    again.SetFromHHMMSS(time.GetAsHHMMSS());
    FUZZ_CHECK(again == time && !(again < time) && again >= time);
    FUZZ_EQUAL(again.GetHour() * 10000 + again.GetMinute() * 100 + again.GetSecond(), time.GetAsHHMMSS());
}

void CheckDateText(std::string const& text, std::string const& format)
{
    int ignored = 0;
    bool const sound = !text.empty() && Read(text, false, ignored);
    nxDate date(20240131u);
    FUZZ_EQUAL(date.SetFromString(text).IsOK(), sound);
    if (!sound)
        FUZZ_EQUAL(date.GetAsString(), std::string("20240131"));
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
        action(moment);
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
    CheckChange(moment, fields,
                [&fields](nxDateTime& changed)
                {
                    changed = nxDateTime(fields.year, fields.month, fields.day, fields.hour, fields.minute,
                                         fields.second, 7);
                });
    int const number = small();
    fields = {moment.GetYear(), moment.GetMonth(),  moment.GetDay(),
              moment.GetHour(), moment.GetMinute(), moment.GetSecond()};
    switch (input.Below(4))
    {
    case 0:
        fields.month = number;
        CheckChange(moment, fields, [number](nxDateTime& changed) { changed.SetMonth(number); });
        break;
    case 1:
        fields.day = number;
        CheckChange(moment, fields, [number](nxDateTime& changed) { changed.SetDay(number); });
        break;
    case 2:
        fields.second = number;
        CheckChange(moment, fields, [number](nxDateTime& changed) { changed.SetSecond(number); });
        break;
    default:
        fields.year += number % 1000, fields.month += number, fields.day -= number, fields.hour += number;
        CheckChange(moment, fields,
                    [number](nxDateTime& changed)
                    { changed += nxDateTimeSpan(number % 1000, number, -number, number, 0, 0); });
    }
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
    char stamp[nxTimeStamp::fastStringSize];
    auto const written =
        nxTimeStamp(value, input.Take<unsigned int>() % 1'000'000'000).GetAsStringFast(stamp, sizeof stamp);
    FUZZ_CHECK(written == 0 || std::strlen(stamp) == written - 1);
    auto const date = input.Take<unsigned int>();
    nxDateTime day(nxNullInitalizer{});
    Fields const fields = {static_cast<int>(date / 10000),
                           static_cast<int>(date / 100 % 100),
                           static_cast<int>(date % 100),
                           0,
                           0,
                           0};
    if (date >= 10000000 && date <= 99999999)
        CheckChange(day, fields, [date](nxDateTime& changed) { changed.SetFromISODate(date); });
}
} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    setenv("TZ", "UTC0", 1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    std::string const text = input.Text();
    std::string const format = input.Text();
    CheckMomentText(text);
    CheckTimeText(text);
    CheckDateText(text, format);
    CheckFields(input);
    CheckNumbers(input, format);
    return 0;
}
