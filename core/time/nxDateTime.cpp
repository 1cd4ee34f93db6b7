#include "core/time/nxDateTime.h"

#include "core/platform/nxClock.h"
#include "core/text/nxDigits.h"
#include "core/text/nxStringHelper.h"
#include "core/vocabulary/nxException.h"

#include <array>
#include <climits>
#include <cstddef>
#include <utility>

namespace
{

constexpr char defaultFormat[] = "%d %b %Y %H:%M:%S";
constexpr int firstYearOfCalendar = 1900;
constexpr unsigned int microsecondsPerSecond = 1'000'000;
constexpr unsigned int microsecondsPerMillisecond = 1000;

int WrappingAdd(int left, int right)
{
    return static_cast<int>(static_cast<unsigned int>(left) + static_cast<unsigned int>(right));
}

int WrappingSubtract(int left, int right)
{
    return static_cast<int>(static_cast<unsigned int>(left) - static_cast<unsigned int>(right));
}

// The elapsed seconds between two moments that aren't before the epoch.
int GetElapsedSeconds(long long from, long long to)
{
    long long const elapsed = to - from;
    return elapsed >= INT_MIN && elapsed <= INT_MAX ? static_cast<int>(elapsed) : INT_MIN;
}

void AppendFraction(std::string& text, unsigned int fraction, unsigned int digits)
{
    text += '.';
    nxDigits::AppendPadded(text, fraction, digits);
}

constexpr std::size_t lengthToSecond = 17;      // 20240131 09:30:15
constexpr std::size_t lengthToMicrosecond = 24; // 20240131 09:30:15.123456

/// What a text of either length holds.
struct TextFields
{
    std::array<int, 6> upToSecond = {}; // from the year on
    unsigned int microseconds = 0;
};

/// @return the failure of the first field that is no number.
nxErrorEnum ReadFields(std::string const& text, TextFields& fields)
{
    constexpr std::pair<std::size_t, std::size_t> placesAndLengths[] = {{0, 4}, {4, 2},  {6, 2},
                                                                        {9, 2}, {12, 2}, {15, 2}};
    constexpr std::size_t microsecondsPlace = 18; // and to the end

    nxErrorEnum result;
    int* field = fields.upToSecond.data();
    for (auto const& [place, length] : placesAndLengths)
    {
        result = nxStringHelper::SetFromString(text.substr(place, length), *field++);
        if (!result.IsOK())
            return result;
    }
    if (text.size() == lengthToMicrosecond)
        result = nxStringHelper::SetFromString(text.substr(microsecondsPlace), fields.microseconds);
    return result;
}

} // namespace

nxDateTime::nxDateTime() : _calendarValid(false)
{
    // The count comes from the clock itself: read back from local fields it would be an hour off whenever the clocks
    // have been put back.
    nxPlatform::ClockReading const now = nxPlatform::ReadWallClock();
    constexpr unsigned int nanosecondsPerMillisecond = 1'000'000;
    _timeValue = now.seconds < 0 ? NX_DATE_TIME_NULL : now.seconds;
    _microseconds = now.nanoseconds / nanosecondsPerMillisecond * microsecondsPerMillisecond;
}

nxDateTime::nxDateTime(int year, int month, int day, int hour, int minute, int second,
                       unsigned int microseconds)
    : _calendar(), _microseconds(microseconds), _timeValue(NX_DATE_TIME_NULL), _calendarValid(true)
{
    _calendar.tm_year = WrappingSubtract(year, firstYearOfCalendar);
    _calendar.tm_mon = WrappingSubtract(month, 1);
    _calendar.tm_mday = day;
    _calendar.tm_hour = hour;
    _calendar.tm_min = minute;
    _calendar.tm_sec = second;
    _Normalize();
}

int nxDateTime::GetYear() const
{
    _ValidateTM();
    return WrappingAdd(_calendar.tm_year, firstYearOfCalendar);
}

int nxDateTime::GetMonth() const
{
    _ValidateTM();
    return _calendar.tm_mon + 1;
}

int nxDateTime::GetDay() const
{
    _ValidateTM();
    return _calendar.tm_mday;
}

int nxDateTime::GetHour() const
{
    _ValidateTM();
    return _calendar.tm_hour;
}

int nxDateTime::GetMinute() const
{
    _ValidateTM();
    return _calendar.tm_min;
}

int nxDateTime::GetSecond() const
{
    _ValidateTM();
    return _calendar.tm_sec;
}

int nxDateTime::GetDayOfWeek() const
{
    _ValidateTM();
    return _calendar.tm_wday;
}

void nxDateTime::GetDayOfWeek(nxDayOfWeekEnum& day) const
{
    day = static_cast<unsigned int>(NX_DAY_OF_WEEK_SUNDAY) + static_cast<unsigned int>(GetDayOfWeek());
}

nxValueWrapper<unsigned int, -1, -2> nxDateTime::GetQuarter() const
{
    constexpr unsigned int monthsPerQuarter = 3;
    _ValidateTM();
    if (!IsValid())
        return nxValueWrapper<unsigned int, -1, -2>();
    return static_cast<unsigned int>(_calendar.tm_mon) / monthsPerQuarter;
}

int nxDateTime::GetAsISODate() const
{
    _ValidateTM();
    if (!IsValid())
        return 0;
    auto const year = static_cast<unsigned int>(GetYear());
    auto const month = static_cast<unsigned int>(GetMonth());
    return static_cast<int>(year * 10000 + month * 100 + static_cast<unsigned int>(GetDay()));
}

nxTime nxDateTime::GetTime() const
{
    _ValidateTM();
    nxTime time(nxNullInitalizer{});
    // Not by nxTime's setters, which refuse the second 60 of a zone that counts leap seconds.
    if (IsValid())
        time.SetFromHHMMSS(static_cast<unsigned int>((GetHour() * 100 + GetMinute()) * 100 + GetSecond()));
    return time;
}

void nxDateTime::SetYear(int year)
{
    _SetField(&std::tm::tm_year, WrappingSubtract(year, firstYearOfCalendar));
}

void nxDateTime::SetMonth(int month)
{
    _SetField(&std::tm::tm_mon, WrappingSubtract(month, 1));
}

void nxDateTime::SetDay(int day)
{
    _SetField(&std::tm::tm_mday, day);
}

void nxDateTime::SetHour(int hour)
{
    _SetField(&std::tm::tm_hour, hour);
}

void nxDateTime::SetMinute(int minute)
{
    _SetField(&std::tm::tm_min, minute);
}

void nxDateTime::SetSecond(int second)
{
    _SetField(&std::tm::tm_sec, second);
}

void nxDateTime::SetFromISODate(unsigned int isoDate)
{
    if (isoDate < 10000000 || isoDate > 99999999)
    {
        SetNull();
        return;
    }
    auto const date = static_cast<int>(isoDate);
    *this = nxDateTime(date / 10000, date / 100 % 100, date % 100, 0, 0, 0, 0);
}

void nxDateTime::SetFromGMT(int year, int month, int day, int hour, int minute, int second,
                            unsigned int microseconds)
{
    // The offset goes into the seconds before the fields are looked up, so a local time that the clocks leave out does
    // no harm.
    int const localSecond = WrappingAdd(second, GetTimezoneOffsetFromGMT());
    *this = nxDateTime(year, month, day, hour, minute, localSecond, microseconds);
}

nxErrorEnum nxDateTime::SetFromString(std::string const& text, nxDateTime& result)
{
    std::string trimmed = text;
    result.SetNull();
    nxStringHelper::RightTrim(trimmed);
    nxStringHelper::LeftTrim(trimmed);
    if (trimmed.size() != lengthToSecond && trimmed.size() != lengthToMicrosecond)
        return nxErrorEnum(NX_ERR_INVALID_PARAMETER);

    TextFields fields;
    if (nxErrorEnum const failure = ReadFields(trimmed, fields); !failure.IsOK())
        return failure;
    try
    {
        auto const [year, month, day, hour, minute, second] = fields.upToSecond;
        result = nxDateTime(year, month, day, hour, minute, second, fields.microseconds);
    }
    catch (nxException const& exception)
    {
        return exception.GetError();
    }
    return nxErrorEnum();
}

nxDateTime nxDateTime::operator+(nxDateTimeSpan const& span) const
{
    nxDateTime sum(*this);
    sum += span;
    return sum;
}

nxDateTime nxDateTime::operator-(nxDateTimeSpan const& span) const
{
    nxDateTime difference(*this);
    difference -= span;
    return difference;
}

nxDateTime& nxDateTime::operator+=(nxDateTimeSpan const& span)
{
    _ValidateTM();
    _calendar.tm_year = WrappingAdd(_calendar.tm_year, span._years);
    _calendar.tm_mon = WrappingAdd(_calendar.tm_mon, span._months);
    _calendar.tm_mday = WrappingAdd(_calendar.tm_mday, span._days);
    _calendar.tm_hour = WrappingAdd(_calendar.tm_hour, span._hours);
    _calendar.tm_min = WrappingAdd(_calendar.tm_min, span._minutes);
    _calendar.tm_sec = WrappingAdd(_calendar.tm_sec, span._seconds);
    _Normalize();
    return *this;
}

nxDateTime& nxDateTime::operator-=(nxDateTimeSpan const& span)
{
    _ValidateTM();
    _calendar.tm_year = WrappingSubtract(_calendar.tm_year, span._years);
    _calendar.tm_mon = WrappingSubtract(_calendar.tm_mon, span._months);
    _calendar.tm_mday = WrappingSubtract(_calendar.tm_mday, span._days);
    _calendar.tm_hour = WrappingSubtract(_calendar.tm_hour, span._hours);
    _calendar.tm_min = WrappingSubtract(_calendar.tm_min, span._minutes);
    _calendar.tm_sec = WrappingSubtract(_calendar.tm_sec, span._seconds);
    _Normalize();
    return *this;
}

nxDateTimeSpan nxDateTime::GetDifference(nxDateTime const& other) const
{
    _ValidateTM();
    other._ValidateTM();
    std::tm const& from = _calendar;
    std::tm const& to = other._calendar;
    nxDateTimeSpan span(WrappingSubtract(to.tm_year, from.tm_year), to.tm_mon - from.tm_mon,
                        to.tm_mday - from.tm_mday, to.tm_hour - from.tm_hour, to.tm_min - from.tm_min,
                        to.tm_sec - from.tm_sec);
    span._totalSeconds = GetElapsedSeconds(_timeValue, other._timeValue);
    return span;
}

int nxDateTime::GetLastDayOfMonth(int month, int year)
{
    switch (month)
    {
    case 2: return year % 400 == 0 || (year % 4 == 0 && year % 100 != 0) ? 29 : 28;
    case 4:
    case 6:
    case 9:
    case 11: return 30;
    default: return 31;
    }
}

int nxDateTime::GetTimezoneOffsetFromGMT()
{
    nxDateTime const now;
    nxDateTime const gmt = now.GetAsGMT();
    nxDateTime const gmtReadAsLocal(gmt.GetYear(), gmt.GetMonth(), gmt.GetDay(), gmt.GetHour(),
                                    gmt.GetMinute(), gmt.GetSecond(), 0);
    return GetElapsedSeconds(gmtReadAsLocal._timeValue, now._timeValue);
}

nxDateTime nxDateTime::GetAsGMT() const
{
    nxDateTime gmt(*this);
    gmt._calendarValid = nxPlatform::_gmtime64_s(gmt._calendar, gmt._timeValue);
    if (!gmt._calendarValid)
        gmt._timeValue = NX_DATE_TIME_NULL;
    return gmt;
}

nxDateTime nxDateTime::GetCurrentTimeAsGMT()
{
    return nxDateTime().GetAsGMT();
}

nxDateTime nxDateTime::GetStartOfDay()
{
    nxDateTime const now;
    return nxDateTime(now.GetYear(), now.GetMonth(), now.GetDay(), 0, 0, 0, 0);
}

nxDateTime nxDateTime::GetEndOfDay()
{
    nxDateTime const now;
    return nxDateTime(now.GetYear(), now.GetMonth(), now.GetDay(), 23, 59, 59, microsecondsPerSecond - 1);
}

std::string nxDateTime::GetAsString() const
{
    std::string text;
    AppendAsString(text);
    return text;
}

std::string nxDateTime::GetAsString_Microseconds() const
{
    std::string text;
    AppendAsString_Microseconds(text);
    return text;
}

std::string nxDateTime::GetAsString_Seconds() const
{
    std::string text;
    AppendAsString_Seconds(text);
    return text;
}

std::string nxDateTime::GetAsString(std::string const& format) const
{
    std::string text;
    AppendAsString(text, format);
    return text;
}

std::string nxDateTime::GetAsString(std::string const& format, bool milliseconds, bool microseconds) const
{
    bool const hasFraction = !IsNull() && !IsNoChange();
    std::string text;
    _AppendAsString(text, format.c_str(), milliseconds && hasFraction, microseconds && hasFraction);
    return text;
}

void nxDateTime::AppendAsString(std::string& text) const
{
    _AppendAsString(text, defaultFormat, true, false);
}

void nxDateTime::AppendAsString_Microseconds(std::string& text) const
{
    _AppendAsString(text, defaultFormat, false, true);
}

void nxDateTime::AppendAsString_Seconds(std::string& text) const
{
    _AppendAsString(text, defaultFormat, false, false);
}

void nxDateTime::AppendAsString(std::string& text, char const* format) const
{
    _AppendAsString(text, format, false, false);
}

void nxDateTime::AppendAsString(std::string& text, std::string const& format) const
{
    _AppendAsString(text, format.c_str(), false, false);
}

std::string nxDateTime::GetAsLogString() const
{
    std::string text;
    AppendAsLogString(text);
    return text;
}

std::string nxDateTime::GetAsLogString_Microseconds() const
{
    std::string text;
    AppendAsLogString_Microseconds(text);
    return text;
}

std::string nxDateTime::GetAsLogString_Seconds() const
{
    std::string text;
    AppendAsLogString_Seconds(text);
    return text;
}

std::string nxDateTime::GetAsLogString(std::string const& format) const
{
    std::string text;
    AppendAsLogString(text, format);
    return text;
}

void nxDateTime::AppendAsLogString(std::string& text) const
{
    _AppendAsLogString(text, defaultFormat, true, false);
}

void nxDateTime::AppendAsLogString_Microseconds(std::string& text) const
{
    _AppendAsLogString(text, defaultFormat, false, true);
}

void nxDateTime::AppendAsLogString_Seconds(std::string& text) const
{
    _AppendAsLogString(text, defaultFormat, false, false);
}

void nxDateTime::AppendAsLogString(std::string& text, char const* format) const
{
    _AppendAsLogString(text, format, false, false);
}

void nxDateTime::AppendAsLogString(std::string& text, std::string const& format) const
{
    _AppendAsLogString(text, format.c_str(), false, false);
}

void nxDateTime::_ValidateTM() const
{
    if (_calendarValid)
        return;
    _calendarValid = nxPlatform::_localtime64_s(_calendar, _timeValue);
    if (!_calendarValid)
        _timeValue = NX_DATE_TIME_NULL;
}

long long nxDateTime::_Normalize()
{
    _ValidateTM();
    long long const moment = nxPlatform::_mktime64(_calendar);
    if (moment < 0)
    {
        _calendarValid = false; // the time value still tells the moment that the object had
        throw nxException(nxErrorEnum(NX_ERR_INVALID_PARAMETER));
    }
    _timeValue = moment;
    return moment;
}

void nxDateTime::_SetField(int std::tm::*field, int value)
{
    _ValidateTM();
    _calendar.*field = value;
    _Normalize();
}

void nxDateTime::_AppendAsString(std::string& text, char const* format, bool milliseconds,
                                 bool microseconds) const
{
    _ValidateTM();
    if (_calendarValid)
    {
        char buffer[1024];
        text.append(buffer, nxPlatform::strftime(buffer, sizeof(buffer), format, _calendar));
    }
    if (milliseconds)
        AppendFraction(text, GetMilliseconds(), 3);
    else if (microseconds)
        AppendFraction(text, _microseconds, 6);
}

void nxDateTime::_AppendAsLogString(std::string& text, char const* format, bool milliseconds,
                                    bool microseconds) const
{
    if (IsNull())
        text += "NULL";
    else if (IsNoChange())
        text += "NO_CHANGE";
    else
        _AppendAsString(text, format, milliseconds, microseconds);
}

std::string nxStringHelper::GetAsString(nxDateTime const& value)
{
    return value.GetAsString_Seconds();
}

void nxStringHelper::AppendAsString(std::string& out, nxDateTime const& value)
{
    value.AppendAsString_Seconds(out);
}
