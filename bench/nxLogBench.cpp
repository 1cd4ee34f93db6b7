// What a log statement costs the thread that makes it, and how many lines a second reach the file: the library beside
// spdlog, with the same statement (text, int, double, 12 characters, token) and a file of its own for each.
//
// Contestants take turns over seven rounds; what is printed is the median of the rounds.

#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogSite.h"
#include "core/process/nxApplicationData.h"
#include "core/vocabulary/nxBuySellEnum.h"

#ifdef NX_BENCH_SPDLOG
#include <spdlog/async.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>
#endif

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace
{

using Clock = std::chrono::steady_clock;
using Nanoseconds = std::chrono::duration<double, std::nano>;

constexpr int rounds = 7;
constexpr unsigned int timedLines = 300000;    // of a producer, for the figures of single statements
constexpr unsigned int writtenLines = 1000000; // of a producer, until all are on disk

/// Counts what comes behind the file device, so that its flush means that the lines before it are on disk.
class CountingDevice : public nxLogDevice
{
public:
    nxErrorEnum Destroy() override
    {
        return nxErrorEnum();
    }

    void Write(nxLog const&) override
    {
        ++_written;
    }

    void Flush() override
    {
        std::lock_guard<std::mutex> guard(_mutex);
        _flushed = _written;
        _changed.notify_all();
    }

    void WaitFor(unsigned long long lines)
    {
        std::unique_lock<std::mutex> guard(_mutex);
        _changed.wait(guard, [&] { return _flushed >= lines; });
    }

private:
    std::mutex _mutex;
    std::condition_variable _changed;
    unsigned long long _written = 0;
    unsigned long long _flushed = 0;
};

/// One way to log: a statement, and the wait until all statements are in the file.
struct Contestant
{
    std::string name;
    std::function<void(unsigned int lines, std::vector<float>* nanoseconds)> log;
    std::function<void()> finish;
};

struct Figures
{
    double mean = 0;
    double median = 0;
    double p99 = 0;
    double p999 = 0;
    double linesPerSecond = 0;
};

/// Times each call of `statement` by one reading of the clock, which the figures contain. Without a place for the
/// times, only calls it.
template <typename Statement>
void Repeat(unsigned int lines, std::vector<float>* nanoseconds, Statement statement)
{
    if (nanoseconds == nullptr)
    {
        for (unsigned int i = 0; i < lines; ++i)
        {
            statement(i);
        }
        return;
    }
    Clock::time_point last = Clock::now();
    for (unsigned int i = 0; i < lines; ++i)
    {
        statement(i);
        Clock::time_point const now = Clock::now();
        (*nanoseconds)[i] = static_cast<float>(Nanoseconds(now - last).count());
        last = now;
    }
}

double Percentile(std::vector<float> const& sorted, double share)
{
    std::size_t const place = static_cast<std::size_t>(share * static_cast<double>(sorted.size()));
    return static_cast<double>(sorted[std::min(place, sorted.size() - 1)]);
}

/// @return how many seconds it took until all lines of all producers were in the file.
double RunProducers(Contestant const& contestant, unsigned int lines,
                    std::vector<std::vector<float>*> const& times)
{
    auto const start = Clock::now();
    std::vector<std::thread> threads;
    for (std::vector<float>* const time : times)
    {
        threads.emplace_back([&contestant, lines, time] { contestant.log(lines, time); });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    contestant.finish();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

Figures Run(Contestant const& contestant, unsigned int producers)
{
    std::vector<std::vector<float>> times(producers);
    std::vector<std::vector<float>*> places;
    for (std::vector<float>& time : times)
    {
        time.assign(timedLines, 0); // its pages are there before the clock runs
        places.push_back(&time);
    }
    (void)RunProducers(contestant, timedLines, places);

    std::vector<float> all;
    for (std::vector<float> const& time : times)
    {
        all.insert(all.end(), time.begin(), time.end());
    }
    std::sort(all.begin(), all.end());
    Figures figures;
    for (float const time : all)
    {
        figures.mean += static_cast<double>(time) / static_cast<double>(all.size());
    }
    figures.median = Percentile(all, 0.5);
    figures.p99 = Percentile(all, 0.99);
    figures.p999 = Percentile(all, 0.999);

    double const seconds =
        RunProducers(contestant, writtenLines, std::vector<std::vector<float>*>(producers, nullptr));
    figures.linesPerSecond = static_cast<double>(writtenLines) * producers / seconds;
    return figures;
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void Compare(std::vector<Contestant> const& contestants, unsigned int producers)
{
    std::vector<std::vector<Figures>> all(contestants.size());
    for (int round = 0; round <= rounds; ++round)
    {
        for (std::size_t i = 0; i < contestants.size(); ++i)
        {
            Figures const figures = Run(contestants[i], producers);
            if (round != 0) // the first warms up
            {
                all[i].push_back(figures);
            }
        }
    }
    std::printf("\n%u producer%s\n", producers, producers == 1 ? "" : "s");
    std::printf("%-14s %9s %9s %9s %9s %12s\n", "", "mean ns", "p50 ns", "p99 ns", "p99.9 ns", "lines/s");
    for (std::size_t i = 0; i < contestants.size(); ++i)
    {
        auto const median = [&](double Figures::*figure)
        {
            std::vector<double> values;
            for (Figures const& figures : all[i])
            {
                values.push_back(figures.*figure);
            }
            return Median(values);
        };
        std::printf("%-14s %9.0f %9.0f %9.0f %9.0f %12.0f\n", contestants[i].name.c_str(),
                    median(&Figures::mean), median(&Figures::median), median(&Figures::p99),
                    median(&Figures::p999), median(&Figures::linesPerSecond));
    }
}

constexpr char userName[] = "ABCDEFGHIJKL";

Contestant GetLibrary(std::string const& directory)
{
    (void)setenv("KVT_LOG_DIRECTORY", directory.c_str(), 1);
    (void)setenv("KVT_LOG_TO_CONSOLE", "NO", 1);
    nxApplicationData::SetApplicationName("bench");
    static CountingDevice* const counter = new CountingDevice;
    static std::atomic<unsigned long long> logged = 0;
    nxFileLogDevice& file = nxFileLogDevice::GetInstance();
    if (!file.Create(nxValueWrapper<unsigned long long, -1, -2>()))
    {
        std::exit(1);
    }
    nxLogManager::GetInstance().RegisterLogDevice(&file);
    nxLogManager::GetInstance().RegisterLogDevice(counter);

    auto const log = [](unsigned int lines, std::vector<float>* nanoseconds)
    {
        nxBuySellEnum const side(NX_BUY);
        Repeat(lines, nanoseconds,
               [&](unsigned int i)
               {
                   NX_LOG(NX_INF, "Order accepted, quantity " << static_cast<int>(i) << " price "
                                                              << 101.375 + static_cast<double>(i % 64)
                                                              << " user " << userName << " side " << side);
               });
        logged += lines;
    };
    return Contestant{"nxLog", log, [] { counter->WaitFor(logged); }};
}

#ifdef NX_BENCH_SPDLOG
Contestant GetPeer(std::string const& name, std::shared_ptr<spdlog::logger> logger)
{
    auto const log = [logger](unsigned int lines, std::vector<float>* nanoseconds)
    {
        nxBuySellEnum const side(NX_BUY);
        Repeat(lines, nanoseconds,
               [&](unsigned int i)
               {
                   SPDLOG_LOGGER_INFO(logger, "Order accepted, quantity {} price {} user {} side {}",
                                      static_cast<int>(i), 101.375 + static_cast<double>(i % 64), userName,
                                      side.GetShortDescription());
               });
    };
    return Contestant{name, log, [logger] { logger->flush(); }};
}
#endif

void CompareLevelOff()
{
    constexpr unsigned int statements = 200000000;
    std::vector<double> library;
    std::vector<double> peer;
#ifdef NX_BENCH_SPDLOG
    auto const logger = spdlog::get("sync");
#endif
    for (int round = 0; round < rounds; ++round)
    {
        auto start = Clock::now();
        for (unsigned int i = 0; i < statements; ++i)
        {
            NX_LOG(NX_DBG, "Order accepted, quantity " << i);
            asm volatile("" : : : "memory");
        }
        library.push_back(Nanoseconds(Clock::now() - start).count() / statements);
#ifdef NX_BENCH_SPDLOG
        start = Clock::now();
        for (unsigned int i = 0; i < statements; ++i)
        {
            logger->debug("Order accepted, quantity {}", i);
            asm volatile("" : : : "memory");
        }
        peer.push_back(Nanoseconds(Clock::now() - start).count() / statements);
#endif
    }
    std::printf("\na level that is off\n%-14s %9.2f ns\n", "nxLog", Median(library));
    if (!peer.empty())
    {
        std::printf("%-14s %9.2f ns\n", "spdlog", Median(peer));
    }
}

void MeasureClock()
{
    constexpr int reads = 10000000;
    auto const start = Clock::now();
    for (int i = 0; i < reads; ++i)
    {
        (void)Clock::now();
    }
    std::printf("one reading of the clock: %.1f ns; each time below contains one\n",
                Nanoseconds(Clock::now() - start).count() / reads);
}

} // namespace

int main()
{
    std::string name = (std::filesystem::temp_directory_path() / "nxLogBenchXXXXXX").string();
    std::string const directory = mkdtemp(name.data());
    // A process with one thread has cheaper mutexes than any host has.
    std::thread([] { std::this_thread::sleep_for(std::chrono::hours(1)); }).detach();

    MeasureClock();
    std::vector<Contestant> contestants = {GetLibrary(directory)};
#ifdef NX_BENCH_SPDLOG
    std::string const pattern = "[%l][%d%b%y %H:%M:%S.%f] %v [%s:%#]";
    auto const sync = spdlog::basic_logger_mt("sync", directory + "/sync.log", true);
    constexpr std::size_t queueSize = 8192;
    spdlog::init_thread_pool(queueSize, 1);
    auto const async =
        spdlog::basic_logger_mt<spdlog::async_factory>("async", directory + "/async.log", true);
    sync->set_pattern(pattern);
    async->set_pattern(pattern);
    contestants.push_back(GetPeer("spdlog sync", sync));
    contestants.push_back(GetPeer("spdlog async", async));
#else
    std::printf("spdlog: not found, left out\n");
#endif
    Compare(contestants, 1);
    Compare(contestants, 2);
    CompareLevelOff();

    (void)nxLogManager::GetInstance().Destroy();
    std::error_code error;
    std::filesystem::remove_all(directory, error);
    (void)std::fflush(stdout);
    std::_Exit(0); // without the peers' own ends
}
