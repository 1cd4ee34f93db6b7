#pragma once

#include "core/platform/nxExport.h"

#include <cstddef>
#include <ctime>

/// @file
/// The system's clocks and its calendar.
///
/// Local time is that of the zone that the environment named (`TZ`, else the host's own) when the calendar was first
/// used or ReloadTimeZone() was last called. Each call that may look at the environment holds the process-wide lock
/// of `nxEnvironmentLock.h` while it runs, so none may be made by a thread that holds that lock already. Any thread
/// may call any of them.

namespace nxPlatform
{

/// A moment: seconds since the epoch, below zero before it, and the fraction of that second, 0 to 999999999.
struct ClockReading
{
    long long seconds;
    unsigned int nanoseconds;
};

/// The moment now, as finely as the system knows it. Makes no system call.
ClockReading ReadWallClock();

/// A count that only grows, at one rate, whatever is done to the wall clock; its start means nothing.
long long QueryPerformanceCounter();

/// Counts of QueryPerformanceCounter() in a second.
constexpr long long QueryPerformanceFrequency()
{
    return 1'000'000'000;
}

/// Fills in the local calendar fields of a moment.
///
/// @param seconds  since the epoch.
/// @return false, with every number of `fields` set to -1, for a moment before the epoch or in a year that an `int`
///         can't hold.
bool _localtime64_s(std::tm& fields, long long seconds);

/// The same in Greenwich time.
bool _gmtime64_s(std::tm& fields, long long seconds);

/// Finds the moment of local calendar fields and puts the fields in range.
///
/// All six of year, month, day, hour, minute and second may lie out of range; each carries into the next on the wall
/// clock, so 86400 seconds more are the same hour of the next day, also when that day has 23 or 25 hours. Day of
/// week, day of year and daylight flag are not read.
///
/// The answer depends on nothing but the fields and the zone: where the clock was put back, a time that comes twice is
/// the earlier of the two; where it was put forward, a time that was left out counts on with the offset that held
/// before, so 02:30 becomes 03:30.
///
/// @return seconds since the epoch; -1, with `fields` left alone, for a moment before the epoch or in a year that an
///         `int` can't hold.
long long _mktime64(std::tm& fields);

/// What a log line shows of a moment's local time, in the space of one register.
struct LogTime
{
    unsigned int dayAndHour;   ///< 0 for a moment without a calendar; else what the readers below take apart
    unsigned int secondOfHour; ///< 0 to 3599

    unsigned int GetYearOfCentury() const
    {
        return dayAndHour >> 14;
    }
    unsigned int GetMonth() const ///< 1 to 12
    {
        return dayAndHour >> 10 & 0xF;
    }
    unsigned int GetDay() const
    {
        return dayAndHour >> 5 & 0x1F;
    }
    unsigned int GetHour() const
    {
        return dayAndHour & 0x1F;
    }
};

/// The quick relative of _localtime64_s(), without a lock, a system call or an allocation for a moment in one of the
/// 64 hours that were asked for last.
LogTime GetLogTime(long long seconds);

/// Writes calendar fields by the C library's conversions, with the names of the "C" locale whatever the host's locale.
///
/// @param size  bytes that `buffer` has room for.
/// @return the length without the terminating NUL; 0 also for a text that doesn't fit, when `buffer` holds anything.
std::size_t strftime(char* buffer, std::size_t size, char const* format, std::tm const& fields);

/// Reads the zone from the environment anew. Calendar fields that were filled in before stay as they are.
NX_CORE_API void ReloadTimeZone();

} // namespace nxPlatform
