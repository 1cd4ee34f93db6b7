#include "tests/faults/Faults.h"

#include "core/logging/nxFileLogDevice.h"
#include "core/logging/nxLogSite.h"
#include "core/process/nxApplicationData.h"
#include "tests/Sanitizer.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string_view>

#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

bool isFull = false;

Figure::Figure(char const* name, Show show)
{
    All()[name] = show;
}

std::map<std::string, Figure::Show>& Figure::All()
{
    static std::map<std::string, Show> all;
    return all;
}

unsigned int Trials(unsigned int quick, unsigned int full)
{
    return underSanitizer ? (isFull ? quick : std::max(quick / 10, 1u)) : isFull ? full : quick;
}

double SecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

bool Report(Clock::time_point start, bool isKept, char const* format, ...)
{
    std::va_list values;
    va_start(values, format);
    (void)std::vprintf(format, values);
    va_end(values);
    std::printf(", %.1f s%s\n", SecondsSince(start), isKept ? "" : " FAILED");
    return isKept;
}

void NotRun(std::string const& line)
{
    constexpr int skipped = 77;
    std::printf("%s\n", line.c_str());
    std::exit(skipped);
}

Directory::Directory(files::path const& parent)
{
    std::string name = (parent / "nxfaultsXXXXXX").string();
    path = mkdtemp(name.data());
}

Directory::~Directory()
{
    std::error_code error;
    files::remove_all(path, error);
}

SmallDisk::SmallDisk(unsigned long long bytes)
    : isMounted(unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                mount("tmpfs", path.c_str(), "tmpfs", 0, ("size=" + std::to_string(bytes)).c_str()) == 0)
{
}

SmallDisk::~SmallDisk()
{
    if (isMounted)
        (void)umount2(path.c_str(), MNT_DETACH);
}

void FillDisk(files::path const& ballast)
{
    std::ofstream stream(ballast, std::ios::binary);
    while (stream << std::string(65536, '\0') << std::flush)
    {
    }
}

std::optional<int> WaitFor(pid_t child, double seconds)
{
    auto const start = Clock::now();
    int status = 0;
    while (waitpid(child, &status, WNOHANG) != child)
    {
        if (SecondsSince(start) > seconds)
        {
            (void)kill(child, SIGKILL);
            (void)waitpid(child, nullptr, 0);
            return std::nullopt;
        }
        (void)usleep(200);
    }
    constexpr int ofSignal = 128;
    return WIFEXITED(status) ? WEXITSTATUS(status) : ofSignal + WTERMSIG(status);
}

Environment const shortCycles = {{"KVT_LOG_TIME_BETWEEN_FLUSHES", "0.01"}};

void SetUpLog(files::path const& directory, Environment const& environment)
{
    (void)setenv("KVT_LOG_DIRECTORY", (directory / "log").c_str(), 1);
    (void)setenv("KVT_LOG_TO_CONSOLE", "NO", 1);
    for (auto const& [name, value] : environment)
        (void)setenv(name.c_str(), value.c_str(), 1);
    nxApplicationData::SetApplicationName("host");
}

pid_t StartHost(files::path const& directory, std::function<int()> const& body,
                Environment const& environment)
{
    (void)std::fflush(nullptr);
    pid_t const child = fork();
    if (child != 0)
        return child;
    SetUpLog(directory, environment);
    bool const isThere = chdir(directory.c_str()) == 0 && std::freopen("out", "a", stdout) != nullptr &&
                         std::freopen("err", "a", stderr) != nullptr;
    std::exit(isThere ? body() : 127);
}

std::optional<int> RunHost(files::path const& directory, std::function<int()> const& body, double seconds,
                           Environment const& environment)
{
    return WaitFor(StartHost(directory, body, environment), seconds);
}

namespace
{

/// The first of a thread's numbers in each file, and the one after its last.
using Ranges = std::multimap<unsigned int, unsigned int>;

/// "[INF][24 characters] thread T line N end [file:line]" without the line's end, among lines of other kinds.
bool IsWhole(std::string_view line)
{
    constexpr std::size_t least = 40;
    return line.size() > least && line[0] == '[' && line[4] == ']' && line.back() == ']' &&
           line.find('\r') == std::string_view::npos;
}

bool ReadLine(std::string const& line, unsigned int& thread, unsigned int& number)
{
    std::size_t const message = line.find("] thread ");
    int length = 0;
    return message != std::string::npos &&
           std::sscanf(line.c_str() + message, "] thread %u line %u end [%n", &thread, &number, &length) ==
               2 &&
           length != 0;
}

void CountFile(files::path const& path, LogCount& count, std::map<unsigned int, Ranges>& ranges)
{
    std::map<unsigned int, Ranges::iterator> here;
    std::ifstream stream(path, std::ios::binary);
    for (std::string line; std::getline(stream, line);)
    {
        bool const hasEnd = !stream.eof() && !line.empty() && line.back() == '\r';
        if (hasEnd)
            line.pop_back();
        unsigned int thread = 0;
        unsigned int number = 0;
        if (!hasEnd || !IsWhole(line))
        {
            ++(stream.eof() ? count.tornLast : count.torn);
        }
        else if (ReadLine(line, thread, number))
        {
            auto const [range, isFirst] = here.try_emplace(thread);
            if (isFirst)
                range->second = ranges[thread].emplace(number, number);
            unsigned int& next = range->second->second;
            count.disordered += number != next;
            next += number == next;
        }
    }
}

} // namespace

unsigned int LogCount::Lost(unsigned int threads, unsigned int linesOfEach)
{
    unsigned int lost = 0;
    for (unsigned int thread = 0; thread < threads; ++thread)
        lost += linesOfEach - lines[thread];
    return lost;
}

LogCount CountLog(files::path const& directory)
{
    LogCount count;
    std::map<unsigned int, Ranges> ranges;
    for (auto const& entry : files::recursive_directory_iterator(directory))
    {
        if (entry.path().extension() == ".log")
        {
            ++count.files;
            CountFile(entry.path(), count, ranges);
        }
    }
    for (auto const& [thread, all] : ranges)
    {
        unsigned int& next = count.lines[thread];
        for (auto const& [first, end] : all)
        {
            count.disordered += first != next;
            next = first == next ? end : next;
        }
    }
    return count;
}

void LogToFile(unsigned long long maximumSize)
{
    using Size = nxValueWrapper<unsigned long long, -1, -2>;
    nxFileLogDevice& device = nxFileLogDevice::GetInstance();
    (void)device.Create(maximumSize != 0 ? Size(maximumSize) : Size());
    nxLogManager::GetInstance().RegisterLogDevice(&device);
}

void LogLines(unsigned int thread, unsigned int lines, unsigned int first)
{
    for (unsigned int i = first; i < first + lines; ++i)
        NX_LOG(NX_INF, "thread " << thread << " line " << i << " end");
}

void Drain()
{
    for (int cycle = 0; cycle < 2; ++cycle) // the first end may be that of a cycle that had begun before
        nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(10.0));
}

unsigned int OpenDescriptors()
{
    // The one that reads the directory is not counted.
    auto const all = std::distance(files::directory_iterator("/proc/self/fd"), files::directory_iterator());
    return static_cast<unsigned int>(all) - 1;
}
