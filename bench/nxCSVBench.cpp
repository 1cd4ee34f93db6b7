// Reads a file of 100 MB with ten columns into rows of strings: nxCSVFileReader beside getline and split, and beside
// libfccp where its header is present. Each contestant reads in a process of its own, so that the peak memory beside
// its time is its own.
#include "core/text/nxCSVFileReader.h"

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#if __has_include(<libfccp/csv.h>)
#include <libfccp/csv.h>
#endif

namespace
{

constexpr std::size_t fileSize = 100'000'000;
constexpr unsigned int columnCount = 10;
constexpr double bytesPerMiB = 1024.0 * 1024.0;

// Rows of a list of trades: numbers, prices, names and times of 3 to 23 bytes.
class TradeFile
{
public:
    TradeFile() : _path("/tmp/nxcsvbench." + std::to_string(::getpid()))
    {
        std::ofstream file(_path, std::ios::binary);
        std::string block;
        std::size_t written = 0;
        for (unsigned int row = 0; written < fileSize; ++row)
        {
            block.clear();
            unsigned int const mixed = row * 2654435761u;
            char line[160];
            int const length = std::snprintf(
                line, sizeof(line), "%u,CME,ES%u,%s,%u,%u.%02u,ACC%04u,T%03u,20%02u%02u%02u,%s\n", row,
                mixed % 12 + 1, mixed % 2 == 0 ? "BUY" : "SELL", mixed % 500 + 1, 4000 + mixed % 700,
                mixed % 4 * 25, mixed % 5000, mixed % 300, 20 + mixed % 6, mixed % 12 + 1, mixed % 28 + 1,
                mixed % 10 == 0 ? "partly filled on amend" : "filled");
            file.write(line, length);
            written += static_cast<std::size_t>(length);
        }
        _size = written;
    }

    ~TradeFile()
    {
        (void)std::remove(_path.c_str());
    }

    std::string const& Path() const
    {
        return _path;
    }

    std::size_t Size() const
    {
        return _size;
    }

private:
    std::string _path;
    std::size_t _size = 0;
};

TradeFile const& GetFile()
{
    static TradeFile const file;
    return file;
}

using Rows = std::vector<std::vector<std::string>>;

std::size_t ReadWithLibrary(std::string const& path)
{
    static nxCSVFileReader reader;
    return reader.ReadFile(path).IsOK() ? reader.GetRowCount() : 0;
}

std::size_t ReadWithLibraryQuoted(std::string const& path)
{
    static nxCSVFileReader reader(',', true);
    return reader.ReadFile(path).IsOK() ? reader.GetRowCount() : 0;
}

std::size_t ReadWithGetline(std::string const& path)
{
    static Rows rows;
    std::ifstream file(path);
    std::string line;
    while (std::getline(file, line))
    {
        std::vector<std::string> columns;
        std::size_t begin = 0;
        for (std::size_t end = line.find(','); end != std::string::npos; end = line.find(',', begin))
        {
            columns.push_back(line.substr(begin, end - begin));
            begin = end + 1;
        }
        columns.push_back(line.substr(begin));
        rows.push_back(std::move(columns));
    }
    return rows.size();
}

#if __has_include(<libfccp/csv.h>)
std::size_t ReadWithFccp(std::string const& path)
{
    static Rows rows;
    io::CSVReader<columnCount, io::trim_chars<' ', '\t'>> reader(path);
    std::array<std::string, columnCount> c;
    while (reader.read_row(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7], c[8], c[9]))
        rows.emplace_back(c.begin(), c.end());
    return rows.size();
}
#endif

double GetSeconds(timeval const& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

struct Reading
{
    double seconds = 0.0;
    std::size_t rows = 0;
};

// What is read stays until the child ends, without being destroyed: neither is part of the work.
void ReadInChild(benchmark::State& state, std::size_t (*read)(std::string const&))
{
    TradeFile const& file = GetFile();
    void* const shared =
        ::mmap(nullptr, sizeof(Reading), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    Reading& reading = *static_cast<Reading*>(shared);
    double peak = 0.0;
    double processorTime = 0.0;
    for (auto _ : state)
    {
        pid_t const child = ::fork();
        if (child == 0)
        {
            // Memory and locks work otherwise in a process with one thread.
            std::thread([] { std::this_thread::sleep_for(std::chrono::hours(1)); }).detach();
            auto const start = std::chrono::steady_clock::now();
            std::size_t const rows = read(file.Path());
            auto const stop = std::chrono::steady_clock::now();
            reading = {std::chrono::duration<double>(stop - start).count(), rows};
            ::_exit(0);
        }
        int status = 0;
        rusage usage = {};
        if (::wait4(child, &status, 0, &usage) != child || status != 0 || reading.rows == 0)
        {
            state.SkipWithError("the file was not read");
            break;
        }
        state.SetIterationTime(reading.seconds);
        processorTime += GetSeconds(usage.ru_utime) + GetSeconds(usage.ru_stime);
        peak = static_cast<double>(usage.ru_maxrss) * 1024.0 / bytesPerMiB;
    }
    state.SetBytesProcessed(static_cast<int64_t>(file.Size()) * state.iterations());
    state.counters["processor_ms"] =
        benchmark::Counter(processorTime * 1000.0, benchmark::Counter::kAvgIterations);
    state.counters["peak_MiB"] = peak;
    state.counters["rows"] = static_cast<double>(reading.rows);
    (void)::munmap(shared, sizeof(Reading));
}

} // namespace

BENCHMARK_CAPTURE(ReadInChild, nxCSVFileReader, ReadWithLibrary)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadInChild, nxCSVFileReader_quotes, ReadWithLibraryQuoted)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadInChild, getline_and_split, ReadWithGetline)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
#if __has_include(<libfccp/csv.h>)
BENCHMARK_CAPTURE(ReadInChild, libfccp, ReadWithFccp)->UseManualTime()->Unit(benchmark::kMillisecond);
#endif

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    (void)GetFile(); // before the first child
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
