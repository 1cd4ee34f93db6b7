// F15: that a wall clock which is set, or stands still, moves nothing but the times that are written.

#include "core/core.h"
#include "tests/faults/Faults.h"

#include <atomic>
#include <cstdio>
#include <ctime>
#include <iterator>
#include <thread>

#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace
{

std::atomic<long long> shift = 0;
std::atomic<long long> frozenAt = -1; // seconds since the epoch; negative: the clock runs

int ReadClock(clockid_t clock, timespec* time)
{
    long const result = syscall(SYS_clock_gettime, clock, time);
    if (result == 0 && clock == CLOCK_REALTIME)
    {
        if (long long const frozen = frozenAt; frozen >= 0)
            *time = {frozen, 0};
        time->tv_sec += shift;
    }
    return static_cast<int>(result);
}

} // namespace

// The program's own clock stands before the system's, for the library too.

extern "C" int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    return ReadClock(clock, time);
}

extern "C" int gettimeofday(timeval* time, void*) noexcept
{
    timespec now{};
    int const result = ReadClock(CLOCK_REALTIME, &now);
    *time = {now.tv_sec, now.tv_nsec / 1000};
    return result;
}

extern "C" std::time_t time(std::time_t* out) noexcept
{
    timespec now{};
    (void)ReadClock(CLOCK_REALTIME, &now);
    if (out != nullptr)
        *out = now.tv_sec;
    return now.tv_sec;
}

void ShiftClock(long long seconds)
{
    shift += seconds;
}

namespace
{

struct Setting
{
    char const* name;
    long long to; // the moment to which the clock is set; 0: the clock is moved by
    long long by; // so many seconds
    bool isFrozen;
};

constexpr Setting settings[] = {
    {"+1 s", 0, 1, false},
    {"-1 s", 0, -1, false},
    {"+2 s", 0, 2, false},
    {"+1 h", 0, 3600, false},
    {"-1 h", 0, -3600, false},
    {"across 2038", 2147483646, 0, false},
    {"across 2106", 4294967294, 0, false},
    {"1970", 86400, 0, false},
    {"before 1970", -1, 0, false},
    {"frozen", 0, 0, true},
};

/// Ten cycles of 0.05 s take half a second, however the clock stands.
bool CyclesKeepTheirTime()
{
    auto const start = Clock::now();
    for (int i = 0; i < 10; ++i)
        nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(5.0));
    double const seconds = SecondsSince(start);
    return seconds > 0.4 && seconds < 1.5;
}

/// The clock is set while threads log and the writer sleeps.
int Run(Setting const& setting)
{
    LogToFile();
    std::thread logging(LogLines, 1, 20000, 0);
    LogLines(0, 10);
    Drain();
    nxElapsedTimeCounter const counter;
    ShiftClock(setting.to != 0 ? setting.to - time(nullptr) : setting.by);
    frozenAt = setting.isFrozen ? time(nullptr) : -1;
    LogLines(0, 10, 10);
    int wrong = CyclesKeepTheirTime() ? 0 : 1;
    wrong += counter.GetElapsedTimeInSeconds() < 0.0 || counter.GetElapsedTimeInSeconds() > 60.0 ? 2 : 0;
    if (setting.to > 0)
    {
        long long const apart = nxDateTime().GetAsTimeValue() - setting.to;
        wrong += apart < 0 || apart > 60 ? 4 : 0;
    }
    logging.join();
    return wrong;
}

bool Show()
{
    auto const start = Clock::now();
    unsigned int wrong = 0;
    unsigned int lost = 0;
    for (Setting const& setting : settings)
    {
        Directory const directory;
        Environment const environment = {{"KVT_LOG_TIME_BETWEEN_FLUSHES", "0.05"}, {"TZ", "UTC"}};
        bool const isRight = RunHost(
                                 directory.path, [&] { return Run(setting); }, 60.0, environment) == 0;
        LogCount count = CountLog(directory.path);
        bool const isComplete = count.lines[0] == 20 && count.lines[1] == 20000;
        wrong += !isRight;
        lost += !isComplete;
        if (!isRight || !isComplete)
            std::printf("wrong by %s\n", setting.name);
    }
    return Report(
        start, wrong + lost == 0,
        "F15 clock set to %zu times while threads log: %u with a wrong cycle or time, %u with lines lost",
        std::size(settings), wrong, lost);
}

Figure const figure("clock", Show);

} // namespace
