#pragma once

#include "core/numbers/nxValueWrapper.h"
#include "core/platform/nxExport.h"
#include "core/time/nxDateTimeSpan.h"
#include "core/time/nxTime.h"
#include "core/vocabulary/nxDayOfWeekEnum.h"
#include "core/vocabulary/nxErrorEnum.h"
#include "core/vocabulary/nxInitalizers.h"

#include <ctime>
#include <string>

/// @file
/// A moment with its local calendar fields.

/// A moment in seconds since the epoch and microseconds, or null, or no change, that shows itself as a calendar in the
/// process's local zone.
///
/// The time value, the count of seconds, is what counts: comparison looks at it and the microseconds alone, and
/// assigning it costs three stores. The calendar fields are a cache that the first reader fills in. Two time values
/// are taken as marks, 0 for null and 1 for no change, so the first two seconds of 1970 can't be told. A negative time
/// value is none of null, no change and valid.
///
/// Null and no change have calendar fields too, those of the epoch in local time, and every operation works on them:
/// null plus one second is no change. A moment whose calendar can't be had (before the epoch, or in a year beyond an
/// `int`) turns null under the reader that asks for it, though the reader is `const`; what that one reader returns means
/// nothing.
///
/// Fields that are out of range roll over on the wall clock, each into the next: day 30 of February is a day in March,
/// and 86400 seconds more are the same time on the next day, also when the clocks change in between. A time that comes
/// twice where the clocks are put back is the earlier one; a time that is left out where they are put forward counts on,
/// so 02:30 becomes 03:30. The answer never depends on what was asked before.
///
/// What finds a moment from fields (constructor, setters, arithmetic) throws an nxException with
/// NX_ERR_INVALID_PARAMETER for a moment before the epoch or in a year beyond an `int`; the object then has the time
/// value and microseconds that it had. Nothing logs. Sums of numbers that overflow wrap around. An instance that threads
/// share is guarded by its owner, even if all of them only read. The zone is the one that TZ
/// named when the calendar was first used, or since it was last set through the library.
///
/// @code
/// nxDateTime expiry(2024, 2, 30, 17, 15, 0, 0);
/// expiry.GetAsString_Seconds(); // "01 Mar 2024 17:15:00"
/// @endcode
class NX_CORE_API nxDateTime
{
public:
    static constexpr long long NX_DATE_TIME_NULL = 0;
    static constexpr long long NX_DATE_TIME_NO_CHANGE = 1;

    /// Now, to the millisecond; null should the clock stand before the epoch.
    nxDateTime();

    /// @param year          in full.
    /// @param month         1 to 12.
    /// @param microseconds  stored as they come, also beyond 999999.
    nxDateTime(int year, int month, int day, int hour, int minute, int second, unsigned int microseconds);

    /// @param timeValue  seconds since the epoch, or one of the two marks. Microseconds become 0.
    nxDateTime(long long const& timeValue) noexcept
        : _microseconds(0), _timeValue(timeValue), _calendarValid(false)
    {
    }

    nxDateTime(nxNullInitalizer) noexcept : nxDateTime(NX_DATE_TIME_NULL)
    {
    }

    nxDateTime(nxNoChangeInitalizer) noexcept : nxDateTime(NX_DATE_TIME_NO_CHANGE)
    {
    }

    /// A copy converts nothing and keeps calendar fields that are there, those of GetAsGMT() too.
    nxDateTime(nxDateTime const& other) noexcept
        : _microseconds(other._microseconds), _timeValue(other._timeValue),
          _calendarValid(other._calendarValid)
    {
        if (_calendarValid)
            _calendar = other._calendar;
    }

    nxDateTime& operator=(nxDateTime const& other) noexcept
    {
        _microseconds = other._microseconds;
        _timeValue = other._timeValue;
        _calendarValid = other._calendarValid;
        if (_calendarValid)
            _calendar = other._calendar;
        return *this;
    }

    nxDateTime& operator=(long long const& timeValue) noexcept
    {
        SetFromTimeValue(timeValue);
        return *this;
    }

    ~nxDateTime() = default;

    static nxDateTime GetNullDateTime() noexcept
    {
        return nxDateTime(NX_DATE_TIME_NULL);
    }

    static nxDateTime GetNoChangeDateTime() noexcept
    {
        return nxDateTime(NX_DATE_TIME_NO_CHANGE);
    }

    bool IsNull() const noexcept
    {
        return _timeValue == NX_DATE_TIME_NULL;
    }

    bool IsNoChange() const noexcept
    {
        return _timeValue == NX_DATE_TIME_NO_CHANGE;
    }

    /// True for a time value above 1.
    bool IsValid() const noexcept
    {
        return _timeValue > NX_DATE_TIME_NO_CHANGE;
    }

    void SetNull() noexcept
    {
        SetFromTimeValue(NX_DATE_TIME_NULL);
    }

    void SetNoChange() noexcept
    {
        SetFromTimeValue(NX_DATE_TIME_NO_CHANGE);
    }

    int GetYear() const;  ///< in full
    int GetMonth() const; ///< 1 to 12
    int GetDay() const;   ///< 1 to 31
    int GetHour() const;
    int GetMinute() const;
    int GetSecond() const;
    int GetDayOfWeek() const; ///< 0, Sunday, to 6
    void GetDayOfWeek(nxDayOfWeekEnum& day) const;
    /// 0, January to March, to 3; null unless this is a valid moment.
    nxValueWrapper<unsigned int, -1, -2> GetQuarter() const;
    /// 20240131; 0 unless this is a valid moment.
    int GetAsISODate() const;
    /// Hour, minute and second; null unless this is a valid moment.
    nxTime GetTime() const;

    unsigned int const& GetMicroseconds() const noexcept
    {
        return _microseconds;
    }

    unsigned int GetMilliseconds() const noexcept ///< the microseconds in whole thousands
    {
        return _microseconds / 1000;
    }

    long long GetAsTimeValue() const noexcept
    {
        return _timeValue;
    }

    operator long long() const noexcept
    {
        return _timeValue;
    }

    /// Each sets one local calendar field and lets it roll over. After GetAsGMT() the Greenwich fields are taken for
    /// local ones, so the moment jumps by the zone's offset.
    void SetYear(int year);   ///< in full
    void SetMonth(int month); ///< 1 to 12
    void SetDay(int day);
    void SetHour(int hour);
    void SetMinute(int minute);
    void SetSecond(int second);
    /// @param microseconds  beyond 999999 stored as 0.
    void SetMicroseconds(unsigned int const& microseconds) noexcept
    {
        _microseconds = microseconds < 1'000'000 ? microseconds : 0;
    }

    void SetFromTimeValue(long long const& timeValue) noexcept
    {
        _microseconds = 0;
        _timeValue = timeValue;
        _calendarValid = false;
    }

    /// Midnight of a day as 20240131; 20240230 rolls over into March. A number that hasn't 8 digits makes this null.
    void SetFromISODate(unsigned int isoDate);

    /// Takes Greenwich fields, by the offset that local time has now: where summer time is kept, a moment of the other
    /// season comes out an hour off.
    void SetFromGMT(int year, int month, int day, int hour, int minute, int second,
                    unsigned int microseconds);

    /// Reads 20240131 09:30:15 or 20240131 09:30:15.123456, local time, with blanks, tabs and line ends around it
    /// ignored.
    ///
    /// The four characters between the numbers may be any. Each calendar number may begin with "-", and all roll over:
    /// "202401-1 00:00:00" is 30 December 2023. The epoch itself, and the second after it, are read with success as the
    /// marks that they are.
    /// @return OK; NX_ERR_INVALID_PARAMETER, with a null result, for another length, a number that isn't one, or a
    ///         moment before the epoch. Throws nothing.
    static nxErrorEnum SetFromString(std::string const& text, nxDateTime& result);

    /// Comparison is by time value, then by microseconds, so a null comes before all moments.
    bool operator==(nxDateTime const& other) const noexcept
    {
        return _timeValue == other._timeValue && _microseconds == other._microseconds;
    }

    bool operator!=(nxDateTime const& other) const noexcept
    {
        return !operator==(other);
    }

    bool operator<(nxDateTime const& other) const noexcept
    {
        return _timeValue != other._timeValue ? _timeValue < other._timeValue
                                              : _microseconds < other._microseconds;
    }

    bool operator<=(nxDateTime const& other) const noexcept
    {
        return !other.operator<(*this);
    }

    bool operator>(nxDateTime const& other) const noexcept
    {
        return other.operator<(*this);
    }

    bool operator>=(nxDateTime const& other) const noexcept
    {
        return !operator<(other);
    }

    /// Adds each field of the span to the calendar field of that name, or takes it away, and rolls over. The span's
    /// total and the microseconds play no part.
    nxDateTime operator+(nxDateTimeSpan const& span) const;
    nxDateTime operator-(nxDateTimeSpan const& span) const;
    nxDateTime& operator+=(nxDateTimeSpan const& span);
    nxDateTime& operator-=(nxDateTimeSpan const& span);

    /// `other` minus this: each calendar field by itself without borrowing, and the elapsed time in seconds as the
    /// total, which is INT_MIN when an `int` can't hold it (68 years).
    nxDateTimeSpan GetDifference(nxDateTime const& other) const;

    /// 28 to 31. Any month but 2, 4, 6, 9 and 11 has 31, also one outside of 1 to 12.
    static int GetLastDayOfMonth(int month, int year);

    /// Seconds that local time is ahead of Greenwich now. Within that distance of a clock change it may be the offset
    /// of the other side already.
    static int GetTimezoneOffsetFromGMT();

    /// This moment with Greenwich calendar fields, which readers and texts then show. Time value and microseconds are
    /// those of this object, so the two compare equal.
    nxDateTime GetAsGMT() const;
    static nxDateTime GetCurrentTimeAsGMT();

    /// Today at 00:00:00, local time.
    static nxDateTime GetStartOfDay();
    /// Today at 23:59:59.999999, local time.
    static nxDateTime GetEndOfDay();

    /// @name Text
    /// As 31 Jan 2024 09:30:15.123, with 6 digits in the Microseconds form and none in the Seconds form. Null and no
    /// change print as the first seconds of the epoch in local time.
    ///
    /// A format is one of the C library's `strftime`, always with its English names whatever the locale; it may give up
    /// to 1023 bytes, and a longer text is left out. It stops at a zero byte.
    /// @{
    std::string GetAsString() const;
    std::string GetAsString_Microseconds() const;
    std::string GetAsString_Seconds() const;
    std::string GetAsString(std::string const& format) const;
    /// @param milliseconds  adds "." and 3 digits, @param microseconds adds "." and 6 digits; with both, the
    ///                      milliseconds alone. Null and no change get no fraction.
    std::string GetAsString(std::string const& format, bool milliseconds, bool microseconds) const;
    void AppendAsString(std::string& text) const;
    void AppendAsString_Microseconds(std::string& text) const;
    void AppendAsString_Seconds(std::string& text) const;
    void AppendAsString(std::string& text, char const* format) const;
    void AppendAsString(std::string& text, std::string const& format) const;
    /// @}

    /// @name Text for the log
    /// The same, but null prints as "NULL" and no change as "NO_CHANGE".
    /// @{
    std::string GetAsLogString() const;
    std::string GetAsLogString_Microseconds() const;
    std::string GetAsLogString_Seconds() const;
    std::string GetAsLogString(std::string const& format) const;
    void AppendAsLogString(std::string& text) const;
    void AppendAsLogString_Microseconds(std::string& text) const;
    void AppendAsLogString_Seconds(std::string& text) const;
    void AppendAsLogString(std::string& text, char const* format) const;
    void AppendAsLogString(std::string& text, std::string const& format) const;
    /// @}

private:
    void _ValidateTM() const;
    long long _Normalize();
    void _SetField(int std::tm::*field, int value);
    void _AppendAsString(std::string& text, char const* format, bool milliseconds, bool microseconds) const;
    void _AppendAsLogString(std::string& text, char const* format, bool milliseconds,
                            bool microseconds) const;

    mutable std::tm _calendar; // means something only while _calendarValid is true
    unsigned int _microseconds;
    mutable long long _timeValue;
    mutable bool _calendarValid;
};
