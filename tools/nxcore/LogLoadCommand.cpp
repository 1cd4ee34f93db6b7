// `nxcore log-load`: threads that log as fast as they can, what a statement costs them, and whether all is in the file.

#include "Arguments.h"
#include "Commands.h"
#include "OwnLog.h"
#include "Result.h"

#include "core/logging/nxFileLogDevice.h"
#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogSite.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <thread>

namespace nxTool
{
namespace
{
using Clock = std::chrono::steady_clock;

constexpr long long usualThreads = 2;
constexpr long long mostThreads = 256;
constexpr long long usualLines = 100000;
constexpr long long mostLines = 100000000;
constexpr long long usualLength = 100;
constexpr long long leastLength = 48; // room for the numbers by which a line is found again
constexpr long long mostLength = 65536;
constexpr long long mostTotalLines = 200000000; // four bytes of memory each, beside what the log takes

constexpr long long mostWarmUpLines = 200000; // of all threads: some 100 MB

constexpr std::string_view mark = "log-load thread ";

constexpr Option options[] = {
    {"threads", "N", "threads that log, 1 to 256 (2)"},
    {"lines", "M", "lines of each thread, 1 to 100000000 (100000)"},
    {"length", "L", "bytes of a message, 48 to 65536 (100)"},
    {"cold", "", "measure the first lines too, for which the log has to fetch its memory"},
};

struct Load
{
    long long threads = usualThreads;
    long long lines = usualLines;
    long long length = usualLength;

    unsigned long long TotalLines() const
    {
        return static_cast<unsigned long long>(threads * lines);
    }
};

/// Comes behind the file device: when it is flushed, the file was.
class FlushWatch : public nxLogDevice
{
public:
    nxErrorEnum Destroy() override
    {
        return nxErrorEnum();
    }

    void Write(nxLog const& log) override
    {
        // The program's own lines don't count, nor do those of the warm-up.
        bool const counts = log.GetLogEntry() != nullptr && log.GetLogEntry()->starts_with(mark);
        _written += counts ? 1u : 0u;
    }

    void Flush() override
    {
        std::lock_guard const guard(_mutex);
        _flushed = _written;
        _changed.notify_all();
    }

    void WaitFor(unsigned long long lines)
    {
        std::unique_lock guard(_mutex);
        _changed.wait(guard, [&] { return _flushed >= lines; });
    }

private:
    std::mutex _mutex;
    std::condition_variable _changed;
    unsigned long long _written = 0;
    unsigned long long _flushed = 0;
};

/// Registers the watch for as long as it lives.
class RegisteredWatch : public FlushWatch
{
public:
    RegisteredWatch()
    {
        nxLogManager::GetInstance().RegisterLogDevice(this);
    }

    ~RegisteredWatch() override
    {
        nxLogManager::GetInstance().UnregisterLogDevice(this);
    }
};

/// A directory for the time of the command.
class TemporaryDirectory
{
public:
    TemporaryDirectory()
    {
        std::error_code error;
        std::string pattern = (std::filesystem::temp_directory_path(error) / "nxcore-log-XXXXXX").string();
        if (!error && mkdtemp(pattern.data()) != nullptr)
            _path = pattern;
    }

    ~TemporaryDirectory()
    {
        std::error_code error;
        if (!_path.empty())
            std::filesystem::remove_all(_path, error);
    }

    TemporaryDirectory(TemporaryDirectory const&) = delete;
    TemporaryDirectory& operator=(TemporaryDirectory const&) = delete;

    /// Empty when none could be made.
    std::string const& GetPath() const
    {
        return _path;
    }

private:
    std::string _path;
};

struct Times
{
    double logged = 0;  // seconds until the last thread had ended
    double written = 0; // seconds until all was in the file
    std::vector<float> statements;
};

void LogLines(Load const& load, std::string_view begin, long long thread, float* nanoseconds)
{
    std::string const padding(static_cast<std::size_t>(load.length), '.');
    Clock::time_point last = Clock::now();
    for (long long line = 0; line < load.lines; ++line)
    {
        if (nxLogManager::ShouldLog(NX_INF))
        {
            nxLog log(NX_INF, NX_LOG_SOURCE_FILE, __LINE__);
            log << nxLogCharLenPair(begin.data(), begin.size()) << thread << " line " << line << " ";
            std::size_t const length = log.GetLogEntry()->size();
            log << nxLogCharLenPair(padding.data(), padding.size() - length) << nxLog::nxLogTerminator();
        }
        Clock::time_point const now = Clock::now();
        nanoseconds[line] = static_cast<float>(std::chrono::duration<double, std::nano>(now - last).count());
        last = now;
    }
}

void RunThreads(Load const& load, std::string_view begin, std::vector<float>& nanoseconds)
{
    nanoseconds.assign(load.TotalLines(), 0);
    std::vector<std::thread> threads;
    for (long long thread = 0; thread < load.threads; ++thread)
        threads.emplace_back(LogLines, std::cref(load), begin, thread,
                             nanoseconds.data() + thread * load.lines);
    for (std::thread& thread : threads)
        thread.join();
}

void WarmUp(Load load)
{
    load.lines = std::min(load.lines, mostWarmUpLines / load.threads);
    std::vector<float> nanoseconds;
    RunThreads(load, "log-load warm-up ", nanoseconds);
    // The statements' memory comes back with the cycle after the one that writes them.
    constexpr int cycles = 3;
    for (int i = 0; i < cycles; ++i)
        nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper());
}

Times Measure(Load const& load)
{
    Times times;
    RegisteredWatch watch;
    times.statements.reserve(load.TotalLines());
    Clock::time_point const start = Clock::now();
    RunThreads(load, mark, times.statements);
    times.logged = std::chrono::duration<double>(Clock::now() - start).count();
    watch.WaitFor(load.TotalLines());
    times.written = std::chrono::duration<double>(Clock::now() - start).count();
    return times;
}

/// What the file holds of the lines that were logged.
struct Found
{
    unsigned long long bytes = 0;
    unsigned long long lines = 0;
    unsigned long long disordered = 0; // not the number that follows on the one before, of the same thread
    bool isOpen = false;
};

void CountLine(std::string const& line, std::vector<long long>& next, Found& found)
{
    std::size_t const place = line.find(mark);
    if (place == std::string::npos)
        return;
    found.bytes += line.size() + 1;
    long long thread = 0;
    long long number = 0;
    bool const isWhole =
        std::sscanf(line.c_str() + place + mark.size(), "%lld line %lld", &thread, &number) == 2 &&
        thread >= 0 && thread < static_cast<long long>(next.size()) && line.ends_with("]\r");
    ++found.lines;
    if (!isWhole || number != next[static_cast<std::size_t>(thread)])
    {
        ++found.disordered;
        return;
    }
    ++next[static_cast<std::size_t>(thread)];
}

// A log is no file of delimited rows: its lines may be longer, and what ends them counts.
Found ReadBack(std::string const& path, Load const& load)
{
    Found found;
    std::ifstream file(path, std::ios::binary);
    found.isOpen = file.is_open();
    std::vector<long long> next(static_cast<std::size_t>(load.threads), 0);
    for (std::string line; std::getline(file, line);)
        CountLine(line, next, found);
    return found;
}

Cell Rate(unsigned long long lines, double seconds)
{
    return Cell(static_cast<unsigned long long>(static_cast<double>(lines) / seconds));
}

void ShowPercentiles(std::vector<float>& statements, Result& result)
{
    std::sort(statements.begin(), statements.end());
    double sum = 0;
    for (float const time : statements)
        sum += static_cast<double>(time);
    result.AddField("meanNanoseconds", "mean of a statement, ns",
                    static_cast<long long>(sum / static_cast<double>(statements.size())));
    struct Percentile
    {
        char const* key;
        char const* title;
        double share;
    };
    constexpr Percentile percentiles[] = {
        {"p50Nanoseconds", "half are below, ns", 0.5},
        {"p99Nanoseconds", "99 % are below, ns", 0.99},
        {"p999Nanoseconds", "99.9 % are below, ns", 0.999},
    };
    for (Percentile const& percentile : percentiles)
    {
        std::size_t const place =
            static_cast<std::size_t>(percentile.share * static_cast<double>(statements.size()));
        result.AddField(percentile.key, percentile.title, static_cast<long long>(statements[place]));
    }
    result.AddField("slowestNanoseconds", "slowest, ns", static_cast<long long>(statements.back()));
}

void Show(Load const& load, Times& times, Found const& found, Result& result)
{
    result.AddField("threads", "threads", load.threads);
    result.AddField("lines", "lines", load.TotalLines());
    result.AddField("loggedPerSecond", "lines a second logged", Rate(load.TotalLines(), times.logged));
    result.AddField("writtenPerSecond", "lines a second in the file", Rate(load.TotalLines(), times.written));
    ShowPercentiles(times.statements, result);
    result.AddField("bytes", "bytes in the file", found.bytes);
    result.AddField("linesFound", "lines found", found.lines);
    bool const isComplete = found.lines == load.TotalLines() && found.disordered == 0;
    result.AddField("complete", "each once and in order", isComplete);
}

bool ReadSwitch(Arguments const& arguments, std::string_view name, long long least, long long most,
                long long& value, Result& result)
{
    if (!arguments.Has(name))
        return true;
    auto const number = arguments.GetNumber(name, least, most);
    if (number)
        value = *number;
    else
        result.AddProblem("-" + std::string(name), "a whole number from " + std::to_string(least) + " to " +
                                                       std::to_string(most) + " is expected");
    return number.has_value();
}

Status Run(Arguments const& arguments, Result& result)
{
    Load load;
    if (!ReadSwitch(arguments, "threads", 1, mostThreads, load.threads, result) ||
        !ReadSwitch(arguments, "lines", 1, mostLines, load.lines, result) ||
        !ReadSwitch(arguments, "length", leastLength, mostLength, load.length, result))
        return Status::Unusable;
    if (load.threads * load.lines > mostTotalLines)
        return result.Refuse("-lines",
                             "all threads together log " + std::to_string(mostTotalLines) + " at most");
    nxLogManager& manager = nxLogManager::GetInstance();
    if (!nxLogManager::ShouldLog(NX_INF))
        return result.Refuse("", "KVT_LOG_LEVEL hides lines of level Info");

    std::optional<TemporaryDirectory> temporary;
    if (!arguments.Has("log"))
    {
        temporary.emplace();
        if (temporary->GetPath().empty())
            return result.Refuse(
                "", "no directory for temporary files: TMPDIR, or -log, must name one to write into");
        std::string const fault = OpenOwnLog(temporary->GetPath());
        if (!fault.empty())
            return result.Refuse("", fault);
    }
    std::string const path = nxFileLogDevice::GenerateFileName(".log", false, 1, true, true);

    if (!arguments.Has("cold"))
        WarmUp(load);
    Times times = Measure(load);
    Found const found = ReadBack(path, load);
    if (temporary)
    {
        manager.UnregisterLogDevice(&nxFileLogDevice::GetInstance());
        (void)nxFileLogDevice::GetInstance().Destroy();
    }
    Show(load, times, found, result);
    bool const isComplete = found.lines == load.TotalLines() && found.disordered == 0;
    if (!isComplete)
        result.AddProblem({.file = path,
                           .line = 0,
                           .column = {},
                           .reason = std::to_string(found.lines) + " of " +
                                     std::to_string(load.TotalLines()) + " lines found, " +
                                     std::to_string(found.disordered) + " out of order"});
    return isComplete ? Status::Good : Status::Faulty;
}
} // namespace

Command const logLoadCommand = {
    .name = "log-load",
    .summary = "load the log with lines from several threads and measure it",
    .details =
        "Each thread logs its lines as fast as it can, through the log that every program of the platform\n"
        "has. Shown are the lines a second that the threads got rid of and that reached the file, and how\n"
        "long a statement kept its thread, with one reading of the clock in each time, after a pass that\n"
        "warms up. Then the file is read back: the exit status is 1 when a line is missing, doubled or\n"
        "out of its thread's order. The keys of the log hold, such as KVT_LOG_FORCE_FLUSH. Without -log\n"
        "the file lies in a temporary directory and is removed.",
    .example = "nxcore log-load -threads 4 -lines 250000",
    .options = options,
    .run = Run,
};
} // namespace nxTool
