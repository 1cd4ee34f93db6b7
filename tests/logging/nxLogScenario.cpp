// A host program in a process of its own: each scenario logs in a way that only a whole life of a process shows.

#include "core/concurrency/nxThread.h"
#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogSite.h"
#include "core/process/nxApplicationData.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <new>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

// Blocks that the calling thread has fetched.
static thread_local unsigned int allocations = 0;

// The sanitizers have operators of their own.
#if defined(__has_feature)
#define NX_HAS_FEATURE(feature) __has_feature(feature)
#else
#define NX_HAS_FEATURE(feature) 0
#endif
#if !NX_HAS_FEATURE(address_sanitizer) && !NX_HAS_FEATURE(thread_sanitizer)
void* operator new(std::size_t size)
{
    ++allocations;
    if (void* const block = std::malloc(size))
    {
        return block;
    }
    throw std::bad_alloc();
}

void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    ++allocations;
    return std::malloc(size);
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}
#endif

namespace
{

using Size = nxValueWrapper<unsigned long long, -1, -2>;

bool RegisterFileDevice(Size maximumSize = Size())
{
    nxFileLogDevice& device = nxFileLogDevice::GetInstance();
    bool const isCreated = device.Create(maximumSize);
    nxLogManager::GetInstance().RegisterLogDevice(&device);
    return isCreated;
}

/// Logs "thread n" lines, n rising from 0.
void LogLines(unsigned int thread, unsigned int lines)
{
    for (unsigned int i = 0; i < lines; ++i)
    {
        NX_LOG(NX_INF, "thread " << thread << " line " << i << " end");
    }
}

void LogFromThreads(unsigned int threads, unsigned int lines)
{
    std::vector<std::thread> workers;
    for (unsigned int i = 0; i < threads; ++i)
    {
        workers.emplace_back(LogLines, i, lines);
    }
    for (std::thread& worker : workers)
    {
        worker.join();
    }
}

void Drain()
{
    nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(10.0));
    nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(10.0));
}

unsigned int Number(std::string const& text)
{
    return static_cast<unsigned int>(std::strtoul(text.c_str(), nullptr, 10));
}

/// A static of the host, there before `main` and after it.
struct EarlyAndLate
{
    EarlyAndLate()
    {
        if (std::getenv("SCENARIO_STATICS") != nullptr)
        {
            LogLines(90, 1);
        }
    }

    ~EarlyAndLate()
    {
        if (std::getenv("SCENARIO_STATICS") != nullptr)
        {
            LogLines(91, 1000);
        }
    }
};

EarlyAndLate earlyAndLate;

struct LateInThread
{
    ~LateInThread()
    {
        LogLines(92, 1);
    }
};

/// Runs `work` in a forked child, which ends by `exit`. @return what wait() says, negative for a signal.
int RunForked(std::function<void()> const& work)
{
    pid_t const child = fork();
    if (child == 0)
    {
        alarm(60); // a hang ends
        work();
        std::exit(0);
    }
    int status = 0;
    (void)waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

// The host ends without a word to the log.
int PlainExit(std::vector<std::string> const& arguments)
{
    (void)RegisterFileDevice();
    LogFromThreads(Number(arguments.at(0)), Number(arguments.at(1)));
    return 0;
}

int ExplicitDestroy(std::vector<std::string> const& arguments)
{
    (void)PlainExit(arguments);
    (void)nxLogManager::GetInstance().Destroy();
    LogLines(93, 10); // queued and never written
    (void)nxLogManager::GetInstance().Destroy();
    return 0;
}

// The manager is older than the device here: statics destroyed in reverse order would end the device first.
int ManagerBeforeDevice(std::vector<std::string> const& arguments)
{
    LogLines(0, 1);
    (void)PlainExit(arguments);
    return 0;
}

int ExitHandlers(std::vector<std::string> const&)
{
    (void)std::atexit([] { LogLines(94, 10); }); // before the log's own: runs after it
    (void)RegisterFileDevice();
    (void)std::atexit([] { LogLines(0, 200); });
    std::thread(
        []
        {
            thread_local LateInThread late;
            (void)late;
        })
        .join();
    return 0;
}

int ExitOnOtherThread(std::vector<std::string> const& arguments)
{
    (void)RegisterFileDevice();
    std::thread thread(
        [&arguments]
        {
            LogLines(0, Number(arguments.at(0)));
            std::exit(0);
        });
    thread.join();
    return 1;
}

// Others log while the process ends.
int ExitWhileLogging(std::vector<std::string> const&)
{
    (void)RegisterFileDevice();
    std::atomic<unsigned int> running = 0;
    for (unsigned int i = 1; i <= 3; ++i)
    {
        std::thread(
            [i, &running]
            {
                ++running;
                LogLines(i, 100000000);
            })
            .detach();
    }
    while (running < 3)
    {
        std::this_thread::yield();
    }
    LogLines(0, 1000);
    std::exit(0);
}

/// Ends the process from inside a device.
class ExitingDevice : public nxLogDevice
{
public:
    nxErrorEnum Destroy() override
    {
        return nxErrorEnum();
    }

    void Write(nxLog const& log) override
    {
        if (log.GetLogLevel() == NX_FTL)
        {
            std::exit(0);
        }
    }

    void Flush() override
    {
    }
};

int ExitInDevice(std::vector<std::string> const&)
{
    (void)RegisterFileDevice();
    static ExitingDevice* const device = new ExitingDevice;
    nxLogManager::GetInstance().RegisterLogDevice(device);
    LogLines(0, 200);
    NX_LOG(NX_FTL, "the end");
    pause();
    return 1;
}

// Parent and child log around the fork, while other threads of the parent log.
int Fork(std::vector<std::string> const& arguments)
{
    (void)RegisterFileDevice();
    std::atomic<bool> stop = false;
    std::vector<std::thread> workers;
    for (unsigned int i = 1; i <= 4; ++i)
    {
        workers.emplace_back(
            [i, &stop]
            {
                for (unsigned int line = 0; !stop; ++line)
                {
                    NX_LOG(NX_INF, "thread " << i << " line " << line << " end");
                    std::this_thread::sleep_for(std::chrono::microseconds(50));
                }
            });
    }
    int failures = 0;
    unsigned int parentLine = 0;
    for (unsigned int i = 0; i < Number(arguments.at(0)); ++i)
    {
        NX_LOG(NX_INF, "thread 0 line " << parentLine++ << " end");
        failures += RunForked([] { LogLines(10, 20); }) != 0 ? 1 : 0;
    }
    stop = true;
    for (std::thread& worker : workers)
    {
        worker.join();
    }
    return failures;
}

// Lines that the child's own writer brings to the file, without an end of the process.
int ForkedWriter(std::vector<std::string> const&)
{
    (void)RegisterFileDevice();
    LogLines(0, 5);
    return RunForked(
        []
        {
            LogLines(10, 5);
            Drain();
            _exit(0);
        });
}

int CannotCreate(std::vector<std::string> const&)
{
    bool const isCreated = RegisterFileDevice();
    LogLines(0, 5);
    (void)nxLogManager::GetInstance().Destroy();
    return isCreated ? 1 : 0;
}

// Files may grow to 64 KiB and no further, for a while: what a full disk looks like.
int DiskFull(std::vector<std::string> const& arguments)
{
    constexpr rlim_t room = 65536;
    nxLogManager& manager = nxLogManager::GetInstance();
    (void)signal(SIGXFSZ, SIG_IGN);
    (void)RegisterFileDevice();

    rlimit limit{};
    (void)getrlimit(RLIMIT_FSIZE, &limit);
    rlimit full = limit;
    full.rlim_cur = room;
    (void)setrlimit(RLIMIT_FSIZE, &full);

    unsigned int const lines = Number(arguments.at(0));
    std::string const padding(Number(arguments.at(1)), 'x');
    for (unsigned int i = 0; i < lines; ++i)
    {
        NX_LOG(NX_INF, "thread 0 line " << i << " end " << padding);
    }
    for (int i = 0; i < 5; ++i)
    {
        manager.WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(10.0));
        NX_LOG(NX_INF, "still running");
    }
    (void)setrlimit(RLIMIT_FSIZE, &limit);
    NX_LOG(NX_INF, "room again");
    Drain();
    return 0;
}

// Lines of some 400 bytes and a limit of 1000.
int CutOver(std::vector<std::string> const&)
{
    (void)RegisterFileDevice(Size(1000));
    std::string const padding(330, 'x');
    for (int i = 0; i < 7; ++i)
    {
        NX_LOG(NX_INF, "thread 0 line " << i << " end " << padding);
    }
    return 0;
}

int Reopen(std::vector<std::string> const&)
{
    (void)RegisterFileDevice();
    LogLines(0, 100);
    sleep(1); // a name has a grain of a second
    bool const isOpen = nxFileLogDevice::GetInstance().CloseAndReopenLogFile();
    LogLines(1, 100);
    return isOpen ? 0 : 1;
}

// The directory goes while its file is open, and comes back with the next file.
int VanishedDirectory(std::vector<std::string> const&)
{
    (void)RegisterFileDevice();
    LogLines(0, 10);
    Drain();
    std::filesystem::remove_all(std::getenv("KVT_LOG_DIRECTORY"));
    LogLines(0, 10);
    Drain();
    bool const isOpen = nxFileLogDevice::GetInstance().CloseAndReopenLogFile();
    LogLines(1, 10);
    return isOpen ? 0 : 1;
}

/// Logs while it writes.
class TalkingDevice : public nxLogDevice
{
public:
    explicit TalkingDevice(char const* name) : _name(name)
    {
    }

    nxErrorEnum Destroy() override
    {
        return nxErrorEnum();
    }

    void Write(nxLog const& log) override
    {
        std::printf("%s %s\n", log.GetLogEntry()->c_str(), _name);
        if (*_name == 'a' && *log.GetLogEntry() == "outer")
        {
            NX_LOG(NX_INF, "inner");
        }
    }

    void Flush() override
    {
        std::puts("flush");
    }

private:
    char const* _name;
};

// Two devices, the first of which logs from inside; all at once.
int Nested(std::vector<std::string> const&)
{
    TalkingDevice a("a");
    TalkingDevice b("b");
    nxLogManager::GetInstance().RegisterLogDevice(&a);
    nxLogManager::GetInstance().RegisterLogDevice(&b);
    NX_LOG(NX_INF, "outer");
    nxLogManager::GetInstance().UnregisterAllLogDevices();
    return 0;
}

int Levels(std::vector<std::string> const&)
{
    nxLogManager::GetInstance();
    unsigned int const first = NX_DBG;
    unsigned int const last = NX_FTL;
    for (unsigned int level = first; level <= last; ++level)
    {
        NX_LOG(nxLogLevelEnum(static_cast<nxEnumValue>(level)), "level");
    }
    return 0;
}

// @return how many blocks a thread fetches for the lines of a cycle, once the log has seen such cycles.
int Allocations(std::vector<std::string> const&)
{
    constexpr unsigned int lines = 1000;
    (void)RegisterFileDevice();
    nxLogManager::GetInstance().SetRecommendedBufferCapacity(20000);
    for (int i = 0; i < 4; ++i)
    {
        LogLines(0, lines);
        Drain();
    }
    unsigned int const before = allocations;
    LogLines(0, lines);
    return static_cast<int>(std::min(allocations - before, 100u));
}

/// How many writing calls this process has made.
unsigned long WriteCalls()
{
    std::ifstream stream("/proc/self/io");
    std::string word;
    while (stream >> word && word != "syscw:")
    {
    }
    unsigned long calls = 0;
    stream >> calls;
    return calls;
}

// @return how many calls it took to write the lines of a cycle.
int Writes(std::vector<std::string> const&)
{
    (void)RegisterFileDevice();
    Drain();
    unsigned long const before = WriteCalls();
    LogLines(0, 1000);
    Drain();
    return static_cast<int>(WriteCalls() - before);
}

volatile std::sig_atomic_t signalsHandled = 0;

// The host blocks a signal in all its threads. @return how often the signal was handled all the same.
int Signals(std::vector<std::string> const&)
{
    (void)RegisterFileDevice();
    (void)signal(SIGUSR1, [](int) { signalsHandled = signalsHandled + 1; });
    sigset_t set;
    (void)sigemptyset(&set);
    (void)sigaddset(&set, SIGUSR1);
    (void)pthread_sigmask(SIG_BLOCK, &set, nullptr);
    for (int i = 0; i < 20; ++i)
    {
        (void)kill(getpid(), SIGUSR1);
        LogLines(0, 1);
    }
    Drain();
    return signalsHandled;
}

// Logs a line and hangs about until it is killed.
int Linger(std::vector<std::string> const&)
{
    (void)RegisterFileDevice();
    LogLines(0, 100);
    std::puts("logged");
    (void)std::fflush(stdout);
    pause();
    return 0;
}

} // namespace

int main(int argumentCount, char** argumentValues)
{
    std::map<std::string, int (*)(std::vector<std::string> const&)> const scenarios = {
        {"plain-exit", PlainExit},
        {"destroy", ExplicitDestroy},
        {"manager-first", ManagerBeforeDevice},
        {"exit-handlers", ExitHandlers},
        {"exit-on-other-thread", ExitOnOtherThread},
        {"exit-while-logging", ExitWhileLogging},
        {"exit-in-device", ExitInDevice},
        {"fork", Fork},
        {"forked-writer", ForkedWriter},
        {"cannot-create", CannotCreate},
        {"disk-full", DiskFull},
        {"cut-over", CutOver},
        {"reopen", Reopen},
        {"vanished-directory", VanishedDirectory},
        {"nested", Nested},
        {"levels", Levels},
        {"allocations", Allocations},
        {"writes", Writes},
        {"signals", Signals},
        {"linger", Linger},
    };
    std::vector<std::string> arguments(argumentValues + 1, argumentValues + argumentCount);
    if (arguments.empty() || scenarios.count(arguments.front()) == 0)
    {
        return 2;
    }
    auto const scenario = scenarios.at(arguments.front());
    arguments.erase(arguments.begin());
    char const* const name = std::getenv("SCENARIO_NAME");
    nxApplicationData::SetApplicationName(name != nullptr ? name : "scenario");
    return scenario(arguments);
}
