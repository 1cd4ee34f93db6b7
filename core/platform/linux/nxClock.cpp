#include "core/platform/nxClock.h"

#include "core/platform/nxCivilDay.h"
#include "core/platform/nxEnvironmentLock.h"

#include <array>
#include <atomic>
#include <optional>

#include <locale.h>
#include <time.h>

namespace nxPlatform
{

namespace
{

constexpr unsigned int secondsPerHour = 3600;

// No zone lies farther from Greenwich than this, and nowhere since 1968 were two changes of the clock less than a week
// apart, so the hours from one such distance before a moment to one behind it see at most one change.
constexpr long long farthestOffset = 25LL * secondsPerHour;

// One remembered hour, in which no clock changes, is one word, so that no reader sees half of it: from above the hour's
// number since the epoch plus 1, the offset from Greenwich plus a bias, and the local day and hour at its start as in
// LogTime. An empty slot is 0.
constexpr unsigned int offsetShift = 24;
constexpr unsigned int hourShift = 42;
constexpr unsigned long long offsetMask = (1ULL << (hourShift - offsetShift)) - 1;
constexpr unsigned long long dayAndHourMask = (1ULL << offsetShift) - 1;
constexpr long long offsetBias = 36LL * secondsPerHour; // whole hours, for the second of the hour
constexpr long long rememberedHoursLimit = (1LL << (64 - hourShift)) - 1; // in the year 2448
constexpr std::size_t slotCount = 64;
constinit std::array<std::atomic<unsigned long long>, slotCount> rememberedHours{};

// Guarded by the environment lock.
constinit bool zoneIsRead = false;

// The caller holds the environment lock. localtime_r() need not look at the zone's name by itself.
void ReadZoneOnce()
{
    if (zoneIsRead)
        return;
    ::tzset();
    zoneIsRead = true;
}

// The fields read as if they were those of Greenwich, each carried into the next.
long long SecondsFromFields(std::tm const& fields)
{
    long long const yearsFromMonths = FloorDivide(fields.tm_mon, 12);
    auto const month = static_cast<unsigned int>(fields.tm_mon - yearsFromMonths * 12) + 1;
    long long const days = DaysToMonth(1900LL + fields.tm_year + yearsFromMonths, month) + fields.tm_mday - 1;
    return days * secondsPerDay + fields.tm_hour * 3600LL + fields.tm_min * 60LL + fields.tm_sec;
}

// The caller holds the environment lock. Taken from the fields rather than from tm_gmtoff, which leaves out the
// seconds by which a zone that counts leap seconds differs.
std::optional<long long> AskForOffset(time_t moment)
{
    std::tm fields;
    if (localtime_r(&moment, &fields) == nullptr)
        return std::nullopt;
    return SecondsFromFields(fields) - moment;
}

std::atomic<unsigned long long>& SlotOf(long long hour)
{
    return rememberedHours[static_cast<std::size_t>(hour) % slotCount];
}

// The word of an hour; 0 when it isn't remembered.
unsigned long long Recall(long long hour)
{
    unsigned long long const word = SlotOf(hour).load(std::memory_order_relaxed);
    // An empty slot would pass for the hour before the epoch, but its word is 0 anyway.
    return word >> hourShift == static_cast<unsigned long long>(hour) + 1 ? word : 0;
}

LogTime MakeLogTime(long long wallClock)
{
    long long const day = FloorDivide(wallClock, secondsPerDay);
    auto const second = static_cast<unsigned int>(wallClock - day * secondsPerDay);
    CivilDay const date = CivilFromDays(day);
    auto const yearOfCentury = static_cast<unsigned int>(date.year - FloorDivide(date.year, 100) * 100);
    unsigned int const hour = second / secondsPerHour;
    return {yearOfCentury << 14 | date.month << 10 | date.day << 5 | hour, second % secondsPerHour};
}

// The caller holds the environment lock, so nothing is remembered from a zone that has just been given up.
void Remember(long long hour, long long offset)
{
    if (hour < 0 || hour >= rememberedHoursLimit || offset < -farthestOffset || offset > farthestOffset)
        return;
    unsigned long long const dayAndHour = MakeLogTime(hour * secondsPerHour + offset).dayAndHour;
    unsigned long long const biased = static_cast<unsigned long long>(offset + offsetBias);
    SlotOf(hour).store((static_cast<unsigned long long>(hour) + 1) << hourShift | biased << offsetShift |
                           dayAndHour,
                       std::memory_order_relaxed);
}

// Overflows nowhere: the start of an hour near the ends of 64 bits has no fields.
std::optional<long long> LookUpOffset(long long moment, long long hour)
{
    EnvironmentLock lock;
    ReadZoneOnce();
    long long const start = hour * secondsPerHour;
    std::optional<long long> const offset = AskForOffset(start);
    if (offset && offset == AskForOffset(start + secondsPerHour - 1))
    {
        Remember(hour, *offset);
        return offset;
    }
    return AskForOffset(moment); // the clock changes inside this hour
}

// How far the local clock is ahead of Greenwich at a moment, before the epoch too; nothing without a calendar.
std::optional<long long> FindOffset(long long moment)
{
    long long const hour = FloorDivide(moment, secondsPerHour);
    if (unsigned long long const word = Recall(hour); word != 0)
        return static_cast<long long>(word >> offsetShift & offsetMask) - offsetBias;
    return LookUpOffset(moment, hour);
}

// As GetLogTime(), in all cases.
LogTime LookUpLogTime(long long seconds)
{
    if (seconds < 0)
        return {0, 0};
    std::optional<long long> const offset = FindOffset(seconds);
    return offset ? MakeLogTime(seconds + *offset) : LogTime{0, 0};
}

// The moment at which local clocks show `wallClock`, seconds as if in Greenwich.
std::optional<long long> FindMoment(long long wallClock)
{
    std::optional<long long> const before = FindOffset(wallClock - farthestOffset);
    std::optional<long long> const after = FindOffset(wallClock + farthestOffset);
    if (!before || !after)
        return std::nullopt;
    long long const byOffsetBefore = wallClock - *before;
    if (before == after || FindOffset(byOffsetBefore) == before)
        return byOffsetBefore;
    long long const byOffsetAfter = wallClock - *after;
    if (FindOffset(byOffsetAfter) == after)
        return byOffsetAfter;
    return byOffsetBefore; // neither reads back: left out by a clock put forward
}

bool RefuseFields(std::tm& fields)
{
    fields = std::tm();
    fields.tm_sec = fields.tm_min = fields.tm_hour = fields.tm_mday = fields.tm_mon = fields.tm_year = -1;
    fields.tm_wday = fields.tm_yday = fields.tm_isdst = -1;
    return false;
}

} // namespace

ClockReading ReadWallClock()
{
    timespec now;
    (void)clock_gettime(CLOCK_REALTIME, &now); // fails for an unknown clock only
    return {now.tv_sec, static_cast<unsigned int>(now.tv_nsec)};
}

long long QueryPerformanceCounter()
{
    timespec now;
    (void)clock_gettime(CLOCK_MONOTONIC, &now); // fails for an unknown clock only
    return now.tv_sec * QueryPerformanceFrequency() + now.tv_nsec;
}

bool _localtime64_s(std::tm& fields, long long seconds)
{
    if (seconds < 0)
        return RefuseFields(fields);
    time_t const moment = seconds;
    EnvironmentLock lock;
    ReadZoneOnce();
    return localtime_r(&moment, &fields) != nullptr || RefuseFields(fields);
}

bool _gmtime64_s(std::tm& fields, long long seconds)
{
    if (seconds < 0)
        return RefuseFields(fields);
    // Takes the C library's own zone lock, which a thread inside it at a fork would leave locked in the child.
    time_t const moment = seconds;
    EnvironmentLock lock;
    return gmtime_r(&moment, &fields) != nullptr || RefuseFields(fields);
}

long long _mktime64(std::tm& fields)
{
    std::optional<long long> const moment = FindMoment(SecondsFromFields(fields));
    std::tm inRange;
    if (!moment || !_localtime64_s(inRange, *moment))
        return -1;
    fields = inRange;
    return *moment;
}

LogTime GetLogTime(long long seconds)
{
    constexpr unsigned int hoursPerDay = 24;
    // Of a negative number the quotient is some huge hour that nothing is remembered of.
    unsigned long long const hour = static_cast<unsigned long long>(seconds) / secondsPerHour;
    unsigned long long const word = Recall(static_cast<long long>(hour));
    auto const startOfHour = static_cast<unsigned int>(word >> offsetShift & offsetMask) % secondsPerHour;
    auto const dayAndHour = static_cast<unsigned int>(word & dayAndHourMask);
    auto const secondOfHour =
        static_cast<unsigned int>(static_cast<unsigned long long>(seconds) - hour * secondsPerHour) +
        startOfHour;
    if (word != 0 && secondOfHour < secondsPerHour)
        return {dayAndHour, secondOfHour};
    // Where the offset is no whole hour, the local hour ends inside; the last one of a day goes the long way.
    if (word != 0 && LogTime{dayAndHour, 0}.GetHour() + 1 < hoursPerDay)
        return {dayAndHour + 1, secondOfHour - secondsPerHour};
    return LookUpLogTime(seconds);
}

std::size_t strftime(char* buffer, std::size_t size, char const* format, std::tm const& fields)
{
    EnvironmentLock lock; // the C library looks at the zone's name here, and no fork() comes between
    static locale_t const classic = newlocale(LC_ALL_MASK, "C", nullptr);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    return ::strftime_l(buffer, size, format, &fields, classic);
#pragma GCC diagnostic pop
}

void ReloadTimeZone()
{
    EnvironmentLock lock;
    ::tzset();
    zoneIsRead = true;
    for (std::atomic<unsigned long long>& slot : rememberedHours)
        slot.store(0, std::memory_order_relaxed);
}

} // namespace nxPlatform
