#include "tests/faults/Faults.h"

#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogSite.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>
#include <string_view>
#include <tuple>
#include <utility>

#include <fcntl.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace files = std::filesystem;
using Clock = std::chrono::steady_clock;

bool Report(std::string const& line, Clock::time_point start, bool isKept)
{
    double const seconds = std::chrono::duration<double>(Clock::now() - start).count();
    std::printf("%s, %.1f s%s\n", line.c_str(), seconds, isKept ? "" : " FAILED");
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
    std::string name = ((parent.empty() ? files::temp_directory_path() : parent) / "nxfaultsXXXXXX").string();
    _path = mkdtemp(name.data());
}

Directory::~Directory()
{
    std::error_code error;
    files::remove_all(_path, error);
}

SmallDisk::SmallDisk(unsigned long long bytes)
    : _isMounted(unshare(CLONE_NEWNS) == 0 &&
                 mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                 mount("tmpfs", _directory.Path().c_str(), "tmpfs", 0,
                       ("size=" + std::to_string(bytes)).c_str()) == 0)
{
}

SmallDisk::~SmallDisk()
{
    if (_isMounted)
    {
        (void)umount2(_directory.Path().c_str(), MNT_DETACH);
    }
}

void FillDisk(files::path const& ballast)
{
    int const file = open(ballast.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    static char const zeros[65536] = {};
    while (write(file, zeros, sizeof zeros) > 0)
    {
    }
    (void)close(file);
}

Host::Host(files::path const& directory, std::vector<std::string> const& role, Environment const& environment)
{
    std::vector<std::string> words = {"nxcore_faults", "--host"};
    words.insert(words.end(), role.begin(), role.end());
    std::vector<char*> arguments;
    std::transform(words.begin(), words.end(), std::back_inserter(arguments),
                   [](std::string& word) { return word.data(); });
    arguments.push_back(nullptr);

    _process = fork();
    if (_process != 0)
    {
        return;
    }
    (void)setenv("KVT_LOG_DIRECTORY", (directory / "log").c_str(), 1);
    (void)setenv("KVT_LOG_TO_CONSOLE", "NO", 1);
    for (auto const& [name, value] : environment)
    {
        (void)setenv(name.c_str(), value.c_str(), 1);
    }
    bool const isSet = chdir(directory.c_str()) == 0 && std::freopen("out", "a", stdout) != nullptr &&
                       std::freopen("err", "a", stderr) != nullptr;
    if (isSet)
    {
        (void)execv("/proc/self/exe", arguments.data());
    }
    _exit(127);
}

Host::~Host()
{
    if (_process > 0)
    {
        Signal(SIGKILL);
        (void)waitpid(_process, nullptr, 0);
    }
}

void Host::Signal(int signal) const
{
    (void)kill(_process, signal);
}

std::optional<int> Host::Wait(double seconds)
{
    pid_t const process = std::exchange(_process, -1);
    return WaitFor(process, seconds);
}

std::optional<int> WaitFor(pid_t child, double seconds)
{
    auto const end = Clock::now() + std::chrono::duration<double>(seconds);
    unsigned int pause = 50; // microseconds
    for (;;)
    {
        int status = 0;
        if (waitpid(child, &status, WNOHANG) == child)
        {
            constexpr int ofSignal = 128;
            return WIFEXITED(status) ? WEXITSTATUS(status) : ofSignal + WTERMSIG(status);
        }
        if (Clock::now() > end)
        {
            (void)kill(child, SIGKILL);
            (void)waitpid(child, nullptr, 0);
            return std::nullopt;
        }
        (void)usleep(pause);
        pause = std::min(pause * 2, 1000u);
    }
}

namespace
{

/// The day on which a file was opened: that of its directory, "15Nov2026", or, where that could not be made, that of
/// its last line.
long long DayOf(files::path const& path)
{
    std::tm day{};
    if (strptime(path.parent_path().filename().c_str(), "%d%b%Y", &day) == nullptr)
    {
        struct stat status = {};
        (void)stat(path.c_str(), &status);
        (void)localtime_r(&status.st_mtime, &day);
        day.tm_hour = day.tm_min = day.tm_sec = 0;
    }
    return timegm(&day);
}

/// Files of one process are named by time and number: "host_093005_123_2.log" comes before "host_093005_123_10.log".
auto OrderOf(files::path const& path)
{
    std::string const name = path.stem().string();
    unsigned int time = 0;
    unsigned int process = 0;
    unsigned int number = 0;
    (void)std::sscanf(name.c_str(), "host_%u_%u_%u", &time, &process, &number);
    return std::tuple(DayOf(path), time, process, number);
}

bool ReadNumber(std::string_view& text, std::string_view before, unsigned int& number)
{
    if (text.substr(0, before.size()) != before)
    {
        return false;
    }
    text.remove_prefix(before.size());
    auto const result = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    return result.ec == std::errc();
}

/// "[INF][24 characters] thread T line N end [file:line]" without the line's end.
bool ReadLine(std::string_view line, unsigned int& thread, unsigned int& number)
{
    std::size_t const message = line.find("] ");
    if (message == std::string_view::npos)
    {
        return false;
    }
    line.remove_prefix(message);
    return ReadNumber(line, "] thread ", thread) && ReadNumber(line, " line ", number) &&
           line.substr(0, 6) == " end [" && line.back() == ']';
}

bool IsWhole(std::string_view line)
{
    constexpr std::size_t least = 40;
    return line.size() > least && line[0] == '[' && line[4] == ']' && line.back() == ']' &&
           line.find('\r') == std::string_view::npos;
}

void CountFile(files::path const& path, LogCount& count)
{
    std::ifstream stream(path, std::ios::binary);
    std::string const text(std::istreambuf_iterator<char>(stream), {});
    std::string_view rest = text;
    ++count.files;
    while (!rest.empty())
    {
        std::size_t const end = rest.find("\r\n");
        if (end == std::string_view::npos)
        {
            ++count.tornLast;
            return;
        }
        std::string_view const line = rest.substr(0, end);
        rest.remove_prefix(end + 2);
        unsigned int thread = 0;
        unsigned int number = 0;
        if (!IsWhole(line))
        {
            ++count.torn;
        }
        else if (ReadLine(line, thread, number))
        {
            unsigned int& next = count.lines[thread];
            count.disordered += number != next;
            next += number == next;
        }
    }
}

} // namespace

LogCount CountLog(files::path const& directory)
{
    std::vector<files::path> paths;
    for (auto const& entry : files::recursive_directory_iterator(directory))
    {
        if (entry.path().extension() == ".log")
        {
            paths.push_back(entry.path());
        }
    }
    std::sort(paths.begin(), paths.end(),
              [](files::path const& left, files::path const& right)
              { return OrderOf(left) < OrderOf(right); });
    LogCount count;
    for (files::path const& path : paths)
    {
        CountFile(path, count);
    }
    return count;
}

unsigned int Chance::Below(unsigned int limit)
{
    // Vigna's splitmix64.
    _state += 0x9e3779b97f4a7c15u;
    std::uint64_t mixed = _state;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebu;
    return static_cast<unsigned int>((mixed ^ (mixed >> 31)) % limit);
}

bool LogToFile(unsigned long long maximumSize)
{
    using Size = nxValueWrapper<unsigned long long, -1, -2>;
    nxFileLogDevice& device = nxFileLogDevice::GetInstance();
    bool const isCreated = device.Create(maximumSize != 0 ? Size(maximumSize) : Size());
    nxLogManager::GetInstance().RegisterLogDevice(&device);
    return isCreated;
}

void LogLines(unsigned int thread, unsigned int lines, unsigned int first)
{
    for (unsigned int i = first; i < first + lines; ++i)
    {
        NX_LOG(NX_INF, "thread " << thread << " line " << i << " end");
    }
}

void Drain()
{
    // The first end of a cycle may be that of one that had begun before.
    nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(10.0));
    nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(10.0));
}

unsigned int OpenDescriptors()
{
    // The one that reads the directory is not counted.
    auto const all = std::distance(files::directory_iterator("/proc/self/fd"), files::directory_iterator());
    return static_cast<unsigned int>(all) - 1;
}
