#include "core/concurrency/nxWaitTime.h"

#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>

namespace
{
constexpr std::int32_t nanosecondsPerSecond = 1000000000;
constexpr std::int32_t nanosecondsPerMillisecond = 1000000;

// Cut through 64 bits to 32.
std::int32_t Cut(double number)
{
    constexpr double tooLarge = 9223372036854775808.0; // 2^63
    if (!(number >= -tooLarge && number < tooLarge))
        return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(static_cast<std::int64_t>(number));
}
} // namespace

std::timespec nxWaitTime::FromSeconds(double seconds)
{
    double const wholeSeconds = std::floor(seconds);
    return {Cut(wholeSeconds), Cut((seconds - wholeSeconds) * nanosecondsPerSecond)};
}

std::timespec nxWaitTime::FromMicroseconds(unsigned long long microseconds)
{
    constexpr unsigned long long microsecondsPerSecond = 1000000;
    constexpr long nanosecondsPerMicrosecond = 1000;
    return {static_cast<std::int32_t>(microseconds / microsecondsPerSecond),
            static_cast<long>(microseconds % microsecondsPerSecond) * nanosecondsPerMicrosecond};
}

std::timespec nxWaitTime::Deadline(std::timespec const& relative)
{
    using std::chrono::floor;
    using std::chrono::milliseconds;
    using std::chrono::seconds;
    milliseconds const now = floor<milliseconds>(std::chrono::system_clock::now().time_since_epoch());
    seconds const wholeSeconds = floor<seconds>(now);

    // At most 1999000000 and at least the smallest number of 32 bits plus the milliseconds: it never wraps.
    std::timespec deadline = {wholeSeconds.count() + relative.tv_sec,
                              relative.tv_nsec + (now - wholeSeconds).count() * nanosecondsPerMillisecond};
    if (deadline.tv_nsec > nanosecondsPerSecond) // strictly: a sum of exactly one second stays as it is
    {
        deadline.tv_nsec -= nanosecondsPerSecond;
        ++deadline.tv_sec;
    }
    return deadline;
}
