#include "core/platform/nxClock.h"

#include "core/platform/nxCivilDay.h"
#include "core/platform/nxEnvironmentLock.h"

#include <array>
#include <atomic>

#include <locale.h>
#include <time.h>

namespace nxPlatform
{

namespace
{

constexpr long long secondsPerHour = 3600;

// No zone lies farther from Greenwich than this, and nowhere since 1968 were two changes of the clock less than a week
// apart, so the hours from one such distance before a moment to one behind it see at most one change.
constexpr long long farthestOffset = 25 * secondsPerHour;

// One remembered hour is one word, so that no reader sees half of it: the hour's number since the epoch plus 1 above
// the offset plus 2^19. An empty slot is 0.
constexpr unsigned int offsetBits = 20;
constexpr long long offsetBias = 1LL << (offsetBits - 1);
constexpr long long offsetMask = (1LL << offsetBits) - 1;
constexpr long long rememberedHoursLimit = 1LL << 40;
constexpr std::size_t slotCount = 64;
constinit std::array<std::atomic<long long>, slotCount> rememberedHours{};

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
    return days * secondsPerDay + fields.tm_hour * secondsPerHour + fields.tm_min * 60LL + fields.tm_sec;
}

// The caller holds the environment lock. Taken from the fields rather than from tm_gmtoff, which leaves out the
// seconds by which a zone that counts leap seconds differs.
bool AskForOffset(time_t moment, long long& offset)
{
    std::tm fields;
    if (localtime_r(&moment, &fields) == nullptr)
        return false;
    offset = SecondsFromFields(fields) - moment;
    return true;
}

bool Recall(long long hour, long long& offset)
{
    if (hour < 0)
        return false; // an empty slot would pass for the hour before the epoch
    long long const word =
        rememberedHours[static_cast<std::size_t>(hour) % slotCount].load(std::memory_order_relaxed);
    if (word >> offsetBits != hour + 1)
        return false;
    offset = (word & offsetMask) - offsetBias;
    return true;
}

// The caller holds the environment lock, so nothing is remembered from a zone that has just been given up.
void Remember(long long hour, long long offset)
{
    if (hour < 0 || hour >= rememberedHoursLimit || offset < -offsetBias || offset >= offsetBias)
        return;
    rememberedHours[static_cast<std::size_t>(hour) % slotCount].store(
        ((hour + 1) << offsetBits) + offset + offsetBias, std::memory_order_relaxed);
}

// As GetLocalOffset(), before the epoch too. Overflows nowhere: a start near the ends of 64 bits has no fields.
bool FindOffset(long long moment, long long& offset)
{
    long long const hour = FloorDivide(moment, secondsPerHour);
    if (Recall(hour, offset))
        return true;

    EnvironmentLock lock;
    ReadZoneOnce();
    long long const start = hour * secondsPerHour;
    long long offsetAtEnd = 0;
    if (AskForOffset(start, offset) && AskForOffset(start + secondsPerHour - 1, offsetAtEnd) &&
        offset == offsetAtEnd)
    {
        Remember(hour, offset);
        return true;
    }
    return AskForOffset(moment, offset); // the clock changes inside this hour
}

// The moment at which local clocks show `wallClock`, seconds as if in Greenwich.
bool FindMoment(long long wallClock, long long& moment)
{
    long long before = 0;
    long long after = 0;
    if (!FindOffset(wallClock - farthestOffset, before) || !FindOffset(wallClock + farthestOffset, after))
        return false;
    moment = wallClock - before;
    if (before == after)
        return true;
    long long offset = 0;
    if (!FindOffset(moment, offset))
        return false;
    if (offset == before)
        return true;
    long long const momentAfter = wallClock - after;
    if (!FindOffset(momentAfter, offset))
        return false;
    if (offset == after)
        moment = momentAfter;
    return true; // neither reads back: left out by a clock put forward
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
    long long moment = 0;
    std::tm inRange;
    if (!FindMoment(SecondsFromFields(fields), moment) || !_localtime64_s(inRange, moment))
        return -1;
    fields = inRange;
    return moment;
}

bool GetLocalOffset(long long seconds, long long& offset)
{
    return seconds >= 0 && FindOffset(seconds, offset);
}

std::size_t strftime(char* buffer, std::size_t size, char const* format, std::tm const& fields)
{
    static locale_t const classic = newlocale(LC_ALL_MASK, "C", nullptr);
    EnvironmentLock lock; // the C library looks at the zone's name here
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
    for (std::atomic<long long>& slot : rememberedHours)
        slot.store(0, std::memory_order_relaxed);
}

} // namespace nxPlatform
