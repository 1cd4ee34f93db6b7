// A host program in a process of its own: each scenario logs in a way that only a whole life of a process shows.

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
        return block;
    throw std::bad_alloc();
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
using Numbers = std::vector<unsigned int>;

bool RegisterFileDevice(Size maximumSize = Size())
{
    nxFileLogDevice& device = nxFileLogDevice::GetInstance();
    bool const isCreated = device.Create(maximumSize);
    nxLogManager::GetInstance().RegisterLogDevice(&device);
    return isCreated;
}

/// Logs lines numbered from 0.
void LogLines(unsigned int thread, unsigned int lines, std::string const& padding = "")
{
    for (unsigned int i = 0; i < lines; ++i)
        NX_LOG(NX_INF, "thread " << thread << " line " << i << " end" << padding);
}

void Drain()
{
    for (int cycle = 0; cycle < 2; ++cycle)
        nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(10.0));
}

/// Hands each statement to a function, and says when it is flushed.
class CallingDevice : public nxLogDevice
{
public:
    explicit CallingDevice(
        std::function<void(nxLog const&)> write, std::function<void()> flush = [] {})
        : _write(std::move(write)), _flush(std::move(flush))
    {
    }

    nxErrorEnum Destroy() override
    {
        return nxErrorEnum();
    }

    void Write(nxLog const& log) override
    {
        _write(log);
    }

    void Flush() override
    {
        _flush();
    }

private:
    std::function<void(nxLog const&)> _write;
    std::function<void()> _flush;
};

/// A static of the host, there before `main` and after it.
struct EarlyAndLate
{
    EarlyAndLate()
    {
        LogLines(90, std::getenv("SCENARIO_STATICS") != nullptr ? 1 : 0);
    }

    ~EarlyAndLate()
    {
        LogLines(91, std::getenv("SCENARIO_STATICS") != nullptr ? 1000 : 0);
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

// So many threads with so many lines each; the host ends without a word to the log.
int PlainExit(Numbers const& numbers)
{
    (void)RegisterFileDevice();
    std::vector<std::jthread> workers;
    for (unsigned int i = 0; i < numbers.at(0); ++i)
        workers.emplace_back([i, lines = numbers.at(1)] { LogLines(i, lines); });
    return 0;
}

int ExplicitDestroy(Numbers const& numbers)
{
    (void)PlainExit(numbers);
    (void)nxLogManager::GetInstance().Destroy();
    LogLines(93, 10); // queued and never written
    (void)nxLogManager::GetInstance().Destroy();
    return 0;
}

// The manager is older than the device here: statics destroyed in reverse order would end the device first.
int ManagerBeforeDevice(Numbers const& numbers)
{
    NX_LOG(NX_INF, "first");
    return PlainExit(numbers);
}

// Nothing runs at the end.
int Killed(Numbers const& numbers)
{
    (void)PlainExit(numbers);
    return raise(SIGKILL);
}

int ExitHandlers(Numbers const&)
{
    (void)std::atexit([] { LogLines(94, 10); }); // before the log's own: runs after it
    (void)RegisterFileDevice();
    (void)std::atexit([] { LogLines(0, 200); });
    std::jthread(
        []
        {
            thread_local LateInThread late;
            (void)late;
        });
    return 0;
}

int ExitOnOtherThread(Numbers const&)
{
    (void)RegisterFileDevice();
    std::jthread(
        []
        {
            LogLines(0, 200);
            std::exit(0);
        });
    return 1;
}

// Others log while the process ends.
int ExitWhileLogging(Numbers const&)
{
    (void)RegisterFileDevice();
    std::atomic<unsigned int> running = 0;
    for (unsigned int i = 1; i <= 3; ++i)
        std::thread(
            [i, &running]
            {
                ++running;
                LogLines(i, 100000000);
            })
            .detach();
    while (running < 3)
        std::this_thread::yield();
    LogLines(0, 200);
    std::exit(0);
}

int ExitInDevice(Numbers const&)
{
    (void)RegisterFileDevice();
    static auto* const device = new CallingDevice(
        [](nxLog const& log)
        {
            if (log.GetLogLevel() == NX_FTL)
                std::exit(0);
        });
    nxLogManager::GetInstance().RegisterLogDevice(device);
    LogLines(0, 200);
    NX_LOG(NX_FTL, "the end");
    pause();
    return 1;
}

// Parent and child log around each of so many forks, while other threads of the parent log.
int Fork(Numbers const& numbers)
{
    (void)RegisterFileDevice();
    std::vector<std::jthread> workers;
    for (unsigned int i = 1; i <= 4; ++i)
        workers.emplace_back(
            [i](std::stop_token stop)
            {
                for (unsigned int line = 0; !stop.stop_requested(); ++line)
                {
                    NX_LOG(NX_INF, "thread " << i << " line " << line << " end");
                    std::this_thread::sleep_for(std::chrono::microseconds(50));
                }
            });
    int failures = 0;
    for (unsigned int i = 0; i < numbers.at(0); ++i)
    {
        NX_LOG(NX_INF, "thread 0 line " << i << " end");
        failures += RunForked([] { LogLines(10, 20); }) != 0 ? 1 : 0;
    }
    return failures;
}

// Lines that the child's own writer brings to the file, without an end of the process.
int ForkedWriter(Numbers const&)
{
    (void)RegisterFileDevice();
    LogLines(0, 5);
    sleep(1); // a name has a grain of a second
    return RunForked(
        []
        {
            LogLines(10, 5);
            Drain();
            _exit(0);
        });
}

int CannotCreate(Numbers const&)
{
    bool const isCreated = RegisterFileDevice();
    LogLines(0, 5);
    return isCreated ? 1 : 0;
}

// Files may grow to 64 KiB and no further, for a while: what a full disk looks like.
int DiskFull(Numbers const& numbers)
{
    (void)signal(SIGXFSZ, SIG_IGN);
    (void)RegisterFileDevice();
    rlimit limit{};
    (void)getrlimit(RLIMIT_FSIZE, &limit);
    rlimit const full = {65536, limit.rlim_max};
    (void)setrlimit(RLIMIT_FSIZE, &full);
    LogLines(0, numbers.at(0), std::string(100, 'x'));
    for (int i = 0; i < 5; ++i)
    {
        Drain();
        NX_LOG(NX_INF, "still running");
    }
    (void)setrlimit(RLIMIT_FSIZE, &limit);
    NX_LOG(NX_INF, "room again");
    Drain();
    return 0;
}

// Lines of some 400 bytes and a limit of 1000.
int CutOver(Numbers const&)
{
    (void)RegisterFileDevice(Size(1000));
    LogLines(0, 7, std::string(330, 'x'));
    return 0;
}

// The directory may have gone while its file was open.
int Reopen(Numbers const& numbers)
{
    bool const directoryGoes = numbers.at(0) != 0;
    (void)RegisterFileDevice();
    LogLines(0, 100);
    if (directoryGoes)
    {
        Drain();
        std::filesystem::remove_all(std::getenv("KVT_LOG_DIRECTORY"));
        LogLines(0, 100);
    }
    sleep(1); // a name has a grain of a second
    bool const isOpen = nxFileLogDevice::GetInstance().CloseAndReopenLogFile();
    LogLines(1, 100);
    return isOpen ? 0 : 1;
}

// Two devices, the first of which logs from inside; all at once.
int Nested(Numbers const&)
{
    auto const print = [](nxLog const& log, char const* device)
    { std::printf("%s %s\n", log.GetLogEntry()->c_str(), device); };
    auto const flush = [] { std::puts("flush"); };
    CallingDevice a(
        [&](nxLog const& log)
        {
            print(log, "a");
            if (*log.GetLogEntry() == "outer")
                NX_LOG(NX_INF, "inner");
        },
        flush);
    CallingDevice b([&](nxLog const& log) { print(log, "b"); }, flush);
    nxLogManager::GetInstance().RegisterLogDevice(&a);
    nxLogManager::GetInstance().RegisterLogDevice(&b);
    NX_LOG(NX_INF, "outer");
    nxLogManager::GetInstance().UnregisterAllLogDevices();
    return 0;
}

int Levels(Numbers const&)
{
    nxLogManager::GetInstance();
    for (unsigned int level = NX_DBG; level <= NX_FTL; ++level)
        NX_LOG(nxLogLevelEnum(static_cast<nxEnumValue>(level)), "level");
    return 0;
}

// @return how many blocks a thread fetches for the lines of a cycle, once the log has seen such cycles.
int Allocations(Numbers const&)
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
int Writes(Numbers const&)
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
int Signals(Numbers const&)
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

} // namespace

// Called with a scenario and its numbers.
int main(int argumentCount, char** arguments)
{
    std::map<std::string, int (*)(Numbers const&)> const scenarios = {
        {"plain-exit", PlainExit},
        {"destroy", ExplicitDestroy},
        {"manager-first", ManagerBeforeDevice},
        {"killed", Killed},
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
        {"nested", Nested},
        {"levels", Levels},
        {"allocations", Allocations},
        {"writes", Writes},
        {"signals", Signals},
    };
    Numbers numbers;
    for (int i = 2; i < argumentCount; ++i)
        numbers.push_back(static_cast<unsigned int>(std::strtoul(arguments[i], nullptr, 10)));
    char const* const name = std::getenv("SCENARIO_NAME");
    nxApplicationData::SetApplicationName(name != nullptr ? name : "scenario");
    return scenarios.at(arguments[1])(numbers);
}
