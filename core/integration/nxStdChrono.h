#pragma once

#include "core/time/nxDate.h"
#include "core/time/nxDateTime.h"
#include "core/time/nxTimeStamp.h"

#include <chrono>
#include <optional>

/// @file
/// Opt-in: moments and days as those of std::chrono, and back.

/// A moment is the same moment on both sides; zones play no part. What one side can't express is nothing on the other:
/// std::nullopt there, a null here.
///
/// Nothing here throws or logs, and any thread may call.
class nxStdChronoHelper
{
public:
    using TimePoint = std::chrono::system_clock::time_point;

    /// To the microsecond; those beyond 999999 count on into the seconds.
    /// @return nothing for null, no change, and a moment that the clock can't count to (from the year 2262 on where it
    ///         counts nanoseconds).
    static std::optional<TimePoint> GetAsTimePoint(nxDateTime const& moment)
    {
        if (!moment.IsValid() || !IsInRange(moment.GetAsTimeValue()))
            return std::nullopt;
        return TimePoint(std::chrono::seconds(moment.GetAsTimeValue())) +
               std::chrono::microseconds(moment.GetMicroseconds());
    }

    /// To the nanosecond.
    static std::optional<TimePoint> GetAsTimePoint(nxTimeStamp const& stamp)
    {
        if (!IsInRange(stamp.GetAsTimeValue()))
            return std::nullopt;
        return TimePoint(std::chrono::seconds(stamp.GetAsTimeValue())) +
               std::chrono::duration_cast<TimePoint::duration>(
                   std::chrono::nanoseconds(stamp.GetNanoseconds()));
    }

    /// Cut to the microsecond.
    /// @return null for a moment before the third second of 1970: earlier numbers of seconds are marks, or not valid.
    static nxDateTime GetAsDateTime(TimePoint moment)
    {
        auto const seconds = std::chrono::floor<std::chrono::seconds>(moment);
        if (seconds.time_since_epoch().count() <= nxDateTime::NX_DATE_TIME_NO_CHANGE)
            return nxDateTime::GetNullDateTime();
        nxDateTime result(static_cast<long long>(seconds.time_since_epoch().count()));
        result.SetMicroseconds(Fraction<std::chrono::microseconds>(moment - seconds));
        return result;
    }

    static nxTimeStamp GetAsTimeStamp(TimePoint moment)
    {
        auto const seconds = std::chrono::floor<std::chrono::seconds>(moment);
        return nxTimeStamp(static_cast<long long>(seconds.time_since_epoch().count()),
                           Fraction<std::chrono::nanoseconds>(moment - seconds));
    }

    /// @return nothing for null, no change, and a number that is no day of the calendar, such as 20240230.
    static std::optional<std::chrono::year_month_day> GetAsYearMonthDay(nxDate const& date)
    {
        constexpr unsigned int forYear = 10000;
        constexpr unsigned int forMonth = 100;
        unsigned int const number = date.GetAsISODate().GetValue();
        if (!date.IsValid() || number / forYear >= forYear)
            return std::nullopt;
        std::chrono::year_month_day const day(std::chrono::year(static_cast<int>(number / forYear)),
                                              std::chrono::month(number / forMonth % forMonth),
                                              std::chrono::day(number % forMonth));
        return day.ok() ? std::optional(day) : std::nullopt;
    }

    /// @return null for what is no day of the calendar, and for years that have not 1 to 4 digits.
    static nxDate GetAsDate(std::chrono::year_month_day const& day)
    {
        constexpr int mostYears = 9999;
        int const year = static_cast<int>(day.year());
        if (!day.ok() || year < 0 || year > mostYears)
            return nxDate::GetNullInstance();
        return nxDate(static_cast<unsigned int>(year), static_cast<unsigned int>(day.month()),
                      static_cast<unsigned int>(day.day()));
    }

    nxStdChronoHelper() = delete;

private:
    /// Leaves room for a fraction of a second, and for microseconds that make more than one.
    static bool IsInRange(long long seconds)
    {
        constexpr long long room = 4300; // seconds in the largest unsigned number of microseconds, and some
        auto const least =
            std::chrono::floor<std::chrono::seconds>(TimePoint::min()).time_since_epoch().count();
        auto const most =
            std::chrono::floor<std::chrono::seconds>(TimePoint::max()).time_since_epoch().count();
        return seconds > least && seconds < most - room;
    }

    template <class Unit>
    static unsigned int Fraction(TimePoint::duration fraction)
    {
        return static_cast<unsigned int>(std::chrono::duration_cast<Unit>(fraction).count());
    }
};
