// What a log statement costs the thread that makes it, and how many lines a second reach the file: the library beside
// other logs, with the same statement (text, int, double, 12 characters, token) and a file of its own for each.

#include "core/logging/nxFileLogDevice.h"
#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogSite.h"
#include "core/process/nxApplicationData.h"
#include "core/vocabulary/nxBuySellEnum.h"

#include <benchmark/benchmark.h>

#ifdef NX_BENCH_BOOST_LOG
#include <boost/log/attributes/clock.hpp>
#include <boost/log/core.hpp>
#include <boost/log/expressions.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/log/sinks/text_ostream_backend.hpp>
#include <boost/log/sources/record_ostream.hpp>
#include <boost/log/sources/severity_logger.hpp>
#include <boost/log/support/date_time.hpp>
#include <boost/log/trivial.hpp>
#endif
#ifdef NX_BENCH_GLOG
#include <glog/logging.h>
#endif
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
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace
{

using Clock = std::chrono::steady_clock;
using Nanoseconds = std::chrono::duration<double, std::nano>;

constexpr unsigned int timedLines = 300000;    // of a producer, for the figures of single statements
constexpr unsigned int writtenLines = 1000000; // of a producer, until all are on disk
constexpr unsigned int slowness = 5;           // the slow peers get so much less to do

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
    unsigned int share = 1; // of the lines
};

/// Times each call of `statement` by one reading of the clock, which the times contain. Without a place for the times,
/// only calls it.
template <typename Statement>
void Repeat(unsigned int lines, std::vector<float>* nanoseconds, Statement statement)
{
    if (nanoseconds == nullptr)
    {
        for (unsigned int i = 0; i < lines; ++i)
            statement(i);
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

double GetClockRead()
{
    constexpr int reads = 1000000;
    auto const start = Clock::now();
    for (int i = 0; i < reads; ++i)
        benchmark::DoNotOptimize(Clock::now());
    return Nanoseconds(Clock::now() - start).count() / reads;
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
        threads.emplace_back([&contestant, lines, time] { contestant.log(lines, time); });
    for (std::thread& thread : threads)
        thread.join();
    contestant.finish();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void Statements(benchmark::State& state, Contestant const& contestant, unsigned int producers)
{
    unsigned int const lines = timedLines / contestant.share;
    std::vector<std::vector<float>> times(producers);
    std::vector<std::vector<float>*> places;
    for (std::vector<float>& time : times)
    {
        time.assign(lines, 0); // its pages are there before the clock runs
        places.push_back(&time);
    }
    for ([[maybe_unused]] auto const& round : state)
        (void)RunProducers(contestant, lines, places);

    std::vector<float> all;
    for (std::vector<float> const& time : times)
        all.insert(all.end(), time.begin(), time.end());
    std::sort(all.begin(), all.end());
    double sum = 0;
    for (float const time : all)
        sum += static_cast<double>(time);
    static double const clockRead = GetClockRead();
    state.counters["mean"] = sum / static_cast<double>(all.size()) - clockRead;
    state.counters["p50"] = Percentile(all, 0.5);
    state.counters["p99"] = Percentile(all, 0.99);
    state.counters["p99.9"] = Percentile(all, 0.999);
}

void Lines(benchmark::State& state, Contestant const& contestant, unsigned int producers)
{
    unsigned int const lines = writtenLines / contestant.share;
    std::vector<std::vector<float>*> const untimed(producers, nullptr);
    for ([[maybe_unused]] auto const& round : state)
    {
        double const seconds = RunProducers(contestant, lines, untimed);
        state.counters["lines"] = static_cast<double>(lines) * producers / seconds;
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
        std::exit(1);
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
Contestant GetSpdlog(std::string const& name, std::shared_ptr<spdlog::logger> logger)
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

#ifdef NX_BENCH_GLOG
Contestant GetGlog(std::string const& directory)
{
    FLAGS_log_dir = directory;
    FLAGS_logtostderr = false;
    google::InitGoogleLogging("bench");
    auto const log = [](unsigned int lines, std::vector<float>* nanoseconds)
    {
        nxBuySellEnum const side(NX_BUY);
        Repeat(lines, nanoseconds,
               [&](unsigned int i)
               {
                   LOG(INFO) << "Order accepted, quantity " << static_cast<int>(i) << " price "
                             << 101.375 + static_cast<double>(i % 64) << " user " << userName << " side "
                             << side.GetShortDescription();
               });
    };
    return Contestant{"glog", log, [] { google::FlushLogFiles(google::INFO); }, slowness};
}
#endif

#ifdef NX_BENCH_BOOST_LOG
namespace expr = boost::log::expressions;
using BoostLogger = boost::log::sources::severity_logger_mt<boost::log::trivial::severity_level>;

Contestant GetBoost(std::string const& directory)
{
    using Backend = boost::log::sinks::text_ostream_backend;
    auto const backend = boost::make_shared<Backend>();
    backend->add_stream(boost::make_shared<std::ofstream>(directory + "/boost.log"));
    auto const sink = boost::make_shared<boost::log::sinks::synchronous_sink<Backend>>(backend);
    sink->set_formatter(
        expr::stream << '[' << boost::log::trivial::severity << "]["
                     << expr::format_date_time<boost::posix_time::ptime>("TimeStamp", "%d%b%y %H:%M:%S.%f")
                     << "] " << expr::smessage);
    boost::log::core::get()->add_sink(sink);
    boost::log::core::get()->add_global_attribute("TimeStamp", boost::log::attributes::local_clock());
    boost::log::core::get()->set_filter(boost::log::trivial::severity >= boost::log::trivial::info);
    auto const log = [](unsigned int lines, std::vector<float>* nanoseconds)
    {
        BoostLogger logger;
        nxBuySellEnum const side(NX_BUY);
        Repeat(lines, nanoseconds,
               [&](unsigned int i)
               {
                   BOOST_LOG_SEV(logger, boost::log::trivial::info)
                       << "Order accepted, quantity " << static_cast<int>(i) << " price "
                       << 101.375 + static_cast<double>(i % 64) << " user " << userName << " side "
                       << side.GetShortDescription();
               });
    };
    return Contestant{"boost", log, [sink] { sink->flush(); }, slowness};
}

void BoostLevelOff(benchmark::State& state)
{
    BoostLogger logger;
    unsigned int i = 0;
    for ([[maybe_unused]] auto const& round : state)
        BOOST_LOG_SEV(logger, boost::log::trivial::debug) << "Order accepted, quantity " << i++;
}
BENCHMARK(BoostLevelOff)->Name("LevelOff/boost");
#endif

// A loop of its own: what the benchmark's loop takes is more than what is measured.
constexpr unsigned int offStatements = 1000;

void LevelOff(benchmark::State& state)
{
    for ([[maybe_unused]] auto const& round : state)
    {
        for (unsigned int i = 0; i < offStatements; ++i)
        {
            NX_LOG(NX_DBG, "Order accepted, quantity " << i);
            benchmark::ClobberMemory();
        }
    }
    state.counters["ns"] = benchmark::Counter(
        offStatements / 1e9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(LevelOff)->Name("LevelOff/nxLog");

#ifdef NX_BENCH_SPDLOG
void SpdlogLevelOff(benchmark::State& state)
{
    auto const logger = spdlog::get("sync");
    for ([[maybe_unused]] auto const& round : state)
    {
        for (unsigned int i = 0; i < offStatements; ++i)
        {
            logger->debug("Order accepted, quantity {}", i);
            benchmark::ClobberMemory();
        }
    }
    state.counters["ns"] = benchmark::Counter(
        offStatements / 1e9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(SpdlogLevelOff)->Name("LevelOff/spdlog");
#endif

void ClockRead(benchmark::State& state)
{
    for ([[maybe_unused]] auto const& round : state)
        benchmark::DoNotOptimize(Clock::now());
}
BENCHMARK(ClockRead);

std::vector<Contestant> GetContestants(std::string const& directory)
{
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
    contestants.push_back(GetSpdlog("spdlog", sync));
    contestants.push_back(GetSpdlog("spdlog_async", async));
#endif
#ifdef NX_BENCH_GLOG
    contestants.push_back(GetGlog(directory));
#endif
#ifdef NX_BENCH_BOOST_LOG
    contestants.push_back(GetBoost(directory));
#endif
    return contestants;
}

void Register(std::string const& kind, void (*run)(benchmark::State&, Contestant const&, unsigned int),
              std::vector<Contestant> const& contestants)
{
    for (unsigned int producers = 1; producers <= 2; ++producers)
    {
        for (Contestant const& contestant : contestants)
        {
            std::string const name = kind + "/" + contestant.name + "/" + std::to_string(producers);
            benchmark::RegisterBenchmark(name.c_str(), run, contestant, producers)->Iterations(1);
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    std::string name = (std::filesystem::temp_directory_path() / "nxLogBenchXXXXXX").string();
    std::string const directory = mkdtemp(name.data());
    // A process with one thread has cheaper mutexes than any host has.
    std::thread([] { std::this_thread::sleep_for(std::chrono::hours(1)); }).detach();

    std::vector<Contestant> const contestants = GetContestants(directory);
    // Hosts run for days: what each keeps in memory is there before the clock runs. The library's queue has no bound and
    // comes to its depth by chance, so it runs more than once.
    (void)RunProducers(contestants.front(), writtenLines, {nullptr, nullptr});
    (void)RunProducers(contestants.front(), writtenLines, {nullptr, nullptr});
    for (Contestant const& contestant : contestants)
        (void)RunProducers(contestant, writtenLines / contestant.share, {nullptr, nullptr});
    Register("Statement", Statements, contestants);
    Register("Lines", Lines, contestants);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();

    (void)nxLogManager::GetInstance().Destroy();
    std::error_code error;
    std::filesystem::remove_all(directory, error);
    std::_Exit(0); // without the peers' own ends
}
