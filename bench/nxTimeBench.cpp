// Stamps and date-times beside what their users would write with the C library. Run it with TZ set and without: the
// C library's mktime() and strftime() look at the zone file again each time when it is not set.

#include "core/logging/nxLogStampText.h"
#include "core/time/nxDateTime.h"
#include "core/time/nxTimeStamp.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <ctime>
#include <vector>

#if __has_include(<date/date.h>)
#define NX_BENCH_DATE
#include <date/date.h>
#endif
#if __has_include(<fmt/chrono.h>)
#define NX_BENCH_FMT
#define FMT_HEADER_ONLY
#include <fmt/chrono.h>
#endif

namespace
{

constexpr unsigned int secondsPerHour = 3600;
constexpr long long start = 1'793'869'200; // 5 November 2026 09:00:00 UTC

// The next moment of one hour.
long long NextSecond(unsigned int& n)
{
    return start + n++ % secondsPerHour;
}

void ClockRead(benchmark::State& state)
{
    for (auto _ : state)
    {
        std::timespec now;
        clock_gettime(CLOCK_REALTIME, &now);
        benchmark::DoNotOptimize(now);
    }
}
BENCHMARK(ClockRead);

void StampTaken(benchmark::State& state)
{
    for (auto _ : state)
    {
        nxTimeStamp const stamp;
        benchmark::DoNotOptimize(stamp);
    }
}
BENCHMARK(StampTaken);

void DateTimeNow(benchmark::State& state)
{
    for (auto _ : state)
    {
        nxDateTime const now;
        benchmark::DoNotOptimize(now);
    }
}
BENCHMARK(DateTimeNow);

void StampTextFast(benchmark::State& state)
{
    std::vector<nxTimeStamp> stamps;
    for (unsigned int n = 0; n != secondsPerHour;)
        stamps.emplace_back(NextSecond(n), 123'456'789);
    unsigned int n = 0;
    char text[nxTimeStamp::fastStringSize];
    for (auto _ : state)
    {
        stamps[n++ % secondsPerHour].GetAsStringFast(text, sizeof(text));
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(StampTextFast);

// As the log's writer does it: the stamps of a batch rise, and many share a second.
void StampTextInBatch(benchmark::State& state)
{
    constexpr unsigned int nanosecondsBetween = 2'000'000;
    constexpr unsigned int nanosecondsPerSecond = 1'000'000'000;
    std::vector<nxTimeStamp> stamps;
    for (unsigned int n = 0; n != secondsPerHour; ++n)
    {
        unsigned long long const nanoseconds = std::uint64_t{n} * nanosecondsBetween;
        stamps.emplace_back(start + static_cast<long long>(nanoseconds / nanosecondsPerSecond),
                            static_cast<unsigned int>(nanoseconds % nanosecondsPerSecond));
    }
    nxLogStampText text;
    unsigned int n = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(text.Get(stamps[n++ % secondsPerHour]));
}
BENCHMARK(StampTextInBatch);

void StampTextStrftime(benchmark::State& state)
{
    unsigned int n = 0;
    char text[32];
    std::time_t const first = start;
    std::tm fields = {};
    localtime_r(&first, &fields);
    for (auto _ : state)
    {
        fields.tm_sec = static_cast<int>(n++ % 60);
        std::strftime(text, sizeof(text), "%d%b%Y %H:%M:%S", &fields);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(StampTextStrftime);

void StampTextLocaltimeAndStrftime(benchmark::State& state)
{
    unsigned int n = 0;
    char text[32];
    for (auto _ : state)
    {
        std::time_t const moment = NextSecond(n);
        std::tm fields;
        localtime_r(&moment, &fields);
        std::strftime(text, sizeof(text), "%d%b%Y %H:%M:%S", &fields);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(StampTextLocaltimeAndStrftime);

#ifdef NX_BENCH_DATE
void StampTextDate(benchmark::State& state)
{
    unsigned int n = 0;
    std::string text;
    for (auto _ : state)
    {
        text = date::format("%d%b%Y %T", date::sys_seconds(std::chrono::seconds(NextSecond(n))));
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(StampTextDate);
#endif

#ifdef NX_BENCH_FMT
void StampTextFmt(benchmark::State& state)
{
    unsigned int n = 0;
    char text[32];
    std::time_t const first = start;
    std::tm fields = {};
    localtime_r(&first, &fields);
    for (auto _ : state)
    {
        fields.tm_sec = static_cast<int>(n++ % 60);
        fmt::format_to_n(text, sizeof(text), "{:%d%b%Y %H:%M:%S}", fields);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(StampTextFmt);
#endif

void FieldsToMoment(benchmark::State& state)
{
    int n = 0;
    for (auto _ : state)
    {
        nxDateTime const moment(2026, 11, 5, 9, n++ % 60, 0, 0);
        benchmark::DoNotOptimize(moment);
    }
}
BENCHMARK(FieldsToMoment);

void FieldsToMomentMktime(benchmark::State& state)
{
    int n = 0;
    for (auto _ : state)
    {
        std::tm fields = {};
        fields.tm_year = 126;
        fields.tm_mon = 10;
        fields.tm_mday = 5;
        fields.tm_hour = 9;
        fields.tm_min = n++ % 60;
        fields.tm_isdst = -1;
        benchmark::DoNotOptimize(std::mktime(&fields));
    }
}
BENCHMARK(FieldsToMomentMktime);

void DateTimeText(benchmark::State& state)
{
    unsigned int n = 0;
    std::string text;
    for (auto _ : state)
    {
        text.clear();
        nxDateTime(NextSecond(n)).AppendAsString_Microseconds(text);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(DateTimeText);

void DateTimeTextStrftime(benchmark::State& state)
{
    unsigned int n = 0;
    char text[64];
    for (auto _ : state)
    {
        std::time_t const moment = NextSecond(n);
        std::tm fields;
        localtime_r(&moment, &fields);
        std::size_t const length = std::strftime(text, sizeof(text), "%d %b %Y %H:%M:%S", &fields);
        std::snprintf(text + length, sizeof(text) - length, ".%06u", 123456u);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(DateTimeTextStrftime);

} // namespace
