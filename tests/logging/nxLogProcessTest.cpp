// What whole processes leave behind: at their end, across forks, on disks that fail. Each host is a forked child.

#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogSite.h"
#include "core/process/nxApplicationData.h"
#include "tests/Sanitizer.h"
#include "tests/prices/nxAllocationCount.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

// Threads of a forked child are meant here.
extern "C" char const* __tsan_default_options();

extern "C" char const* __tsan_default_options()
{
    return "die_after_fork=0";
}

namespace
{

namespace files = std::filesystem;
using Counts = std::map<unsigned int, unsigned int>; // by thread
using Size = nxValueWrapper<unsigned long long, -1, -2>;

bool LogToFile(Size maximumSize = Size())
{
    nxFileLogDevice& device = nxFileLogDevice::GetInstance();
    bool const isCreated = device.Create(maximumSize);
    nxLogManager::GetInstance().RegisterLogDevice(&device);
    return isCreated;
}

void LogLines(unsigned int thread, unsigned int lines, std::string const& padding = "")
{
    for (unsigned int i = 0; i < lines; ++i)
        NX_LOG(NX_INF, "thread " << thread << " line " << i << " end" << padding);
}

void LogFromThreads(unsigned int threads, unsigned int lines)
{
    (void)LogToFile();
    std::vector<std::jthread> workers;
    for (unsigned int i = 0; i < threads; ++i)
        workers.emplace_back([=] { LogLines(i, lines); });
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
    explicit CallingDevice(std::function<void(nxLog const&)> write) : _write(std::move(write))
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
        std::puts("flush");
    }

private:
    std::function<void(nxLog const&)> _write;
};

/// Logs before `main` and after it, and at the end of a thread, in a host that asks for it.
struct EarlyAndLate
{
    explicit EarlyAndLate(unsigned int thread, unsigned int late) : _thread(thread), _late(late)
    {
        LogLines(_thread, isWanted ? 1 : 0);
    }
    ~EarlyAndLate()
    {
        LogLines(_thread + 1, isWanted ? _late : 0);
    }

    static inline bool const isWanted = std::getenv("NX_EARLY_AND_LATE") != nullptr;
    unsigned int const _thread;
    unsigned int const _late;
};

EarlyAndLate const earlyAndLate(90, 1000);

std::string ReadFile(files::path const& path)
{
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

/// Runs hosts in a directory of their own.
class nxLogProcess : public testing::Test
{
protected:
    nxLogProcess()
    {
        std::string name = (files::temp_directory_path() / "nxlogXXXXXX").string();
        _directory = mkdtemp(name.data());
        _environment = {{"KVT_LOG_DIRECTORY", (_directory / "log").string()}, {"KVT_LOG_TO_CONSOLE", "NO"}};
    }

    ~nxLogProcess() override
    {
        std::error_code error;
        files::remove_all(_directory, error);
    }

    /// A host ends by `exit` with what its body returns. @return that; above 128 for a signal, which a hang gets too.
    int Run(std::function<int()> const& body)
    {
        (void)std::fflush(nullptr);
        pid_t const child = fork();
        if (child == 0)
        {
            (void)alarm(100);
            for (auto const& [key, value] : _environment)
                (void)setenv(key.c_str(), value.c_str(), 1);
            if (chdir(_directory.c_str()) != 0 || !std::freopen("out", "w", stdout) ||
                !std::freopen("err", "w", stderr))
                _exit(127);
            nxApplicationData::SetApplicationName("host");
            std::exit(body());
        }
        int status = 0;
        (void)waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

    std::string Output() const
    {
        return ReadFile(_directory / "out");
    }

    std::string Errors() const
    {
        return ReadFile(_directory / "err");
    }

    /// The log files in the order of their names.
    std::vector<files::path> LogFiles() const
    {
        std::vector<files::path> paths;
        for (auto const& entry : files::recursive_directory_iterator(_directory))
            if (entry.path().extension() == ".log")
                paths.push_back(entry.path());
        std::sort(paths.begin(), paths.end());
        return paths;
    }

    /// What the files hold; they are removed.
    std::string TakeLog() const
    {
        std::string text;
        for (files::path const& path : LogFiles())
        {
            text += ReadFile(path);
            files::remove(path);
        }
        return text;
    }

    /// Counts the lines of each thread, which must be whole and in order; other lines are collected.
    Counts Count(std::string const& text)
    {
        Counts counts;
        _others.clear();
        EXPECT_TRUE(text.empty() || text.ends_with('\n')) << "torn: " << text.substr(text.rfind('\n') + 1);
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);)
        {
            unsigned int thread = 0;
            unsigned int number = 0;
            std::size_t const message = line.find("] thread ");
            if (message == std::string::npos ||
                std::sscanf(line.c_str() + message, "] thread %u line %u end", &thread, &number) != 2)
                _others.push_back(line);
            else
                EXPECT_EQ(number, counts[thread]++) << line;
        }
        return counts;
    }

    files::path _directory;
    std::map<std::string, std::string> _environment;
    std::vector<std::string> _others;
};

TEST_F(nxLogProcess, LosesNothingByTheWayItEnds)
{
    std::map<std::string, std::function<int()>> const ends = {
        {"returns, and was refused a second file",
         []
         {
             LogFromThreads(4, 20000);
             return nxFileLogDevice::GetInstance().Create(Size()) ? 1 : 0;
         }},
        {"was destroyed before, after which nothing is written",
         []
         {
             LogFromThreads(4, 20000);
             (void)nxLogManager::GetInstance().Destroy();
             LogLines(93, 10);
             return nxLogManager::GetInstance().Destroy().IsOK() ? 0 : 1;
         }},
        {"has a manager that is older than the device",
         []
         {
             NX_LOG(NX_INF, "first");
             return LogFromThreads(4, 20000), 0;
         }},
        {"exits in a device",
         []
         {
             LogFromThreads(4, 20000);
             static auto* const device = new CallingDevice(
                 [](nxLog const& log) { log.GetLogLevel() == NX_FTL ? std::exit(0) : void(); });
             nxLogManager::GetInstance().RegisterLogDevice(device);
             NX_LOG(NX_FTL, "the end");
             return pause();
         }},
    };
    for (auto const& [end, body] : ends)
    {
        ASSERT_EQ(Run(body), 0) << end;
        EXPECT_EQ(Count(TakeLog()), (Counts{{0, 20000}, {1, 20000}, {2, 20000}, {3, 20000}})) << end;
    }
}

TEST_F(nxLogProcess, MayLogFromStaticsThreadLocalsAndExitHandlers)
{
    if (EarlyAndLate::isWanted)
    {
        nxApplicationData::SetApplicationName("host");
        (void)std::atexit([] { LogLines(94, 10); }); // before the log's own: runs after it
        (void)LogToFile();
        (void)std::atexit([] { LogLines(0, 200); });
        std::jthread([] { thread_local EarlyAndLate const late(95, 1); });
        std::exit(0);
    }
    _environment["NX_EARLY_AND_LATE"] = "1";
    char const* const filter = "--gtest_filter=nxLogProcess.MayLogFromStatics*";
    std::string const program = files::read_symlink("/proc/self/exe");
    ASSERT_EQ(Run([=] { return execl(program.c_str(), "host", filter, nullptr); }), 0);
    EXPECT_EQ(Count(TakeLog()), (Counts{{0, 200}, {90, 1}, {91, 1000}, {94, 10}, {95, 1}, {96, 1}}));
}

// "Nobody wakes the writer" holds for those who log, not for the end.
TEST_F(nxLogProcess, EndsWithoutWaitingForALongCycle)
{
    _environment["KVT_LOG_TIME_BETWEEN_FLUSHES"] = "3600";
    ASSERT_EQ(Run([] { return LogFromThreads(1, 10), alarm(20), 0; }), 0);
    EXPECT_EQ(Count(TakeLog()), (Counts{{0, 10}}));
}

TEST_F(nxLogProcess, AForkedChildHasAWriterAndRepeatsNoConsoleLine)
{
    _environment["KVT_LOG_TO_CONSOLE"] = "brief";
    auto const logAndFork = []
    {
        LogFromThreads(1, 5);
        (void)sleep(1); // a name has a grain of a second
        if (fork() == 0)
        {
            LogLines(10, 5);
            Drain(); // the child's own writer brings them to the file, without an end of the process
            _exit(0);
        }
        int status = 0;
        return wait(&status), status;
    };
    ASSERT_EQ(Run(logAndFork), 0);
    std::vector<files::path> const paths = LogFiles();
    ASSERT_EQ(paths.size(), 2u);
    // Named after their own times, so that a process number that comes again overwrites nothing.
    std::size_t const upToTime = std::string("host_093005_").size();
    EXPECT_NE(paths[0].filename().string().substr(0, upToTime),
              paths[1].filename().string().substr(0, upToTime));
    EXPECT_EQ(Count(TakeLog()), (Counts{{0, 5}, {10, 5}}));
    EXPECT_EQ(Count(Output()), (Counts{{0, 5}, {10, 5}}));
}

TEST_F(nxLogProcess, TheUsualLineAllocatesNothing)
{
    auto const countBlocks = []
    {
        (void)LogToFile();
        nxLogManager::GetInstance().SetRecommendedBufferCapacity(20000);
        for (int i = 0; i < 4; ++i)
        {
            LogLines(0, 1000);
            Drain();
        }
        nxAllocationCount const blocks;
        LogLines(0, 1000);
        return static_cast<int>(std::min<std::size_t>(blocks.Get(), 100));
    };
    EXPECT_EQ(Run(countBlocks), 0);
}

TEST_F(nxLogProcess, ABatchIsOneWrite)
{
    if (underAddressSanitizer)
        GTEST_SKIP() << "the sanitizer tries addresses by writing what is there to a pipe";
    auto const countCalls = []
    {
        auto const calls = []
        {
            std::string const counters = ReadFile("/proc/self/io");
            return std::stoi(counters.substr(counters.find("syscw: ") + 7));
        };
        (void)LogToFile();
        Drain();
        int const before = calls();
        LogLines(0, 1000);
        Drain();
        return calls() - before;
    };
    EXPECT_EQ(Run(countCalls), 1);
}

TEST_F(nxLogProcess, TheWriterHandlesNoSignals)
{
    static volatile std::sig_atomic_t handled = 0;
    auto const countSignals = []
    {
        (void)LogToFile();
        (void)signal(SIGUSR1, [](int) { handled = handled + 1; });
        sigset_t set;
        (void)sigemptyset(&set);
        (void)sigaddset(&set, SIGUSR1);
        (void)pthread_sigmask(SIG_BLOCK, &set, nullptr); // in all of the host's threads
        for (int i = 0; i < 20; ++i)
        {
            (void)kill(getpid(), SIGUSR1);
            LogLines(0, 1);
        }
        Drain();
        return static_cast<int>(handled);
    };
    EXPECT_EQ(Run(countSignals), 0);
}

TEST_F(nxLogProcess, AFileOrDirectoryThatCannotBeCreatedIsSaidOnce)
{
    auto const logToNoFile = []
    {
        nxApplicationData::SetApplicationName("no/such");
        bool const isCreated = LogToFile();
        LogLines(0, 5);
        return isCreated ? 1 : 0;
    };
    ASSERT_EQ(Run(logToNoFile), 0);
    EXPECT_TRUE(LogFiles().empty());
    std::regex const told("Failed to create log file. Filename: .*/no/such_\\d{6}_\\d+\\.log\n");
    EXPECT_TRUE(std::regex_match(Errors(), told)) << Errors();

    // Without a directory the file goes to the current one.
    _environment["KVT_LOG_DIRECTORY"] = (_directory / "no" / "parent").string();
    ASSERT_EQ(Run([] { return LogFromThreads(1, 10), 0; }), 0);
    EXPECT_EQ(Output(),
              "Failed to create directory " + (_directory / "no" / "parent").string() + ", errno: 2\n");
    ASSERT_EQ(LogFiles().size(), 1u);
    EXPECT_EQ(LogFiles().front().parent_path(), _directory);
}

TEST_F(nxLogProcess, ADeviceMayLogWhileAllIsWrittenAtOnce)
{
    _environment["KVT_LOG_FORCE_FLUSH"] = "TRUE";
    auto const nest = []
    {
        CallingDevice a(
            [](nxLog const& log)
            {
                std::printf("%s a\n", log.GetLogEntry()->c_str());
                if (*log.GetLogEntry() == "outer")
                    NX_LOG(NX_INF, "inner");
            });
        CallingDevice b([](nxLog const& log) { std::printf("%s b\n", log.GetLogEntry()->c_str()); });
        nxLogManager::GetInstance().RegisterLogDevice(&a);
        nxLogManager::GetInstance().RegisterLogDevice(&b);
        NX_LOG(NX_INF, "outer");
        nxLogManager::GetInstance().UnregisterAllLogDevices();
        return 0;
    };
    ASSERT_EQ(Run(nest), 0);
    EXPECT_EQ(Output(), "outer a\ninner a\ninner b\nflush\nflush\nouter b\nflush\nflush\n");
}

TEST_F(nxLogProcess, BeyondTheBacklogLinesAreCounted)
{
    constexpr unsigned int lines = 800000;
    auto const meetALimit = []
    {
        (void)signal(SIGXFSZ, SIG_IGN);
        (void)LogToFile();
        rlimit limit{};
        (void)getrlimit(RLIMIT_FSIZE, &limit);
        rlimit const full = {65536, limit.rlim_max};
        (void)setrlimit(RLIMIT_FSIZE, &full);
        LogLines(0, lines, std::string(100, 'x'));
        Drain();
        (void)setrlimit(RLIMIT_FSIZE, &limit);
        NX_LOG(NX_INF, "room again");
        Drain();
        return 0;
    };
    ASSERT_EQ(Run(meetALimit), 0);
    std::string const errors = Errors();
    EXPECT_EQ(errors.find("Failed to write to the log file. Filename: "), 0u) << errors;
    EXPECT_LE(std::count(errors.begin(), errors.end(), '\n'), 20); // at most once a second
    std::string const log = TakeLog();
    std::size_t const place = log.find(" lines lost");
    ASSERT_NE(place, std::string::npos);
    EXPECT_EQ(log.find(" lines lost", place + 1), std::string::npos);
    unsigned long const lost = std::stoul(log.substr(log.rfind(' ', place - 1) + 1));
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n') + static_cast<long>(lost), long(lines) + 2);
    // The hole is where the line says.
    unsigned long before = 0;
    unsigned long after = 0;
    ASSERT_EQ(std::sscanf(log.c_str() + log.rfind("] thread 0", place), "] thread 0 line %lu", &before), 1);
    std::size_t const next = std::min(log.find("] thread 0", place), log.size());
    bool const goesOn = std::sscanf(log.c_str() + next, "] thread 0 line %lu", &after) == 1;
    EXPECT_EQ((goesOn ? after : lines) - before - 1, lost);
}

TEST_F(nxLogProcess, CutsOverAfterTheLineThatExceedsTheLimit)
{
    // Lines of some 400 bytes and a limit of 1000.
    ASSERT_EQ(Run([] { return (void)LogToFile(Size(1000)), LogLines(0, 7, std::string(330, 'x')), 0; }), 0);
    std::vector<files::path> const paths = LogFiles();
    ASSERT_EQ(paths.size(), 3u);
    EXPECT_EQ(Count(ReadFile(paths[0])), (Counts{{0, 3}}));
    EXPECT_TRUE(std::regex_match(paths[2].filename().string(), std::regex("host_\\d{6}_\\d+_3\\.log")));
    EXPECT_EQ(Count(TakeLog()), (Counts{{0, 7}}));
}

TEST_F(nxLogProcess, AReopeningLeavesEarlierLinesInTheOldFile)
{
    for (bool const directoryGoes : {false, true})
    {
        auto const reopen = [=]
        {
            LogFromThreads(1, 100);
            if (directoryGoes)
            {
                Drain();
                files::remove_all("log");
                LogLines(0, 100);
            }
            (void)sleep(1); // a name has a grain of a second
            bool const isOpen = nxFileLogDevice::GetInstance().CloseAndReopenLogFile();
            LogLines(1, 100);
            return isOpen ? 0 : 1;
        };
        ASSERT_EQ(Run(reopen), 0);
        std::vector<files::path> const paths = LogFiles();
        ASSERT_EQ(paths.size(), directoryGoes ? 1u : 2u);
        EXPECT_EQ(Count(ReadFile(paths.back())), (Counts{{1, 100}}));
        if (!directoryGoes)
        {
            std::string const old = paths[0].string();
            EXPECT_NE(_others.at(0).find("Successfully opened log file: " + paths[1].string() +
                                         ", Previous log file: " + old),
                      std::string::npos);
            EXPECT_EQ(Count(ReadFile(paths[0])), (Counts{{0, 100}}));
            EXPECT_NE(_others.at(0).find("Closing log file: " + old), std::string::npos);
        }
        (void)TakeLog();
    }
}

TEST_F(nxLogProcess, ReadsItsLevel)
{
    std::string const all = "DBG INF PB1 PB2 PB3 WRN ERR FTL ";
    _environment["KVT_LOG_TO_CONSOLE"] = "brief";
    std::pair<char const*, std::string> const rows[] = {
        {"", all.substr(4)}, {"0", all}, {"7", "FTL "}, {" +7x", "FTL "},
        {"none", all},       {"8", all}, {"-1", all},   {"99999999999999999999", all},
    };
    for (auto const& [level, shown] : rows)
    {
        _environment["KVT_LOG_LEVEL"] = level;
        auto const logAll = []
        {
            (void)nxLogManager::GetInstance(); // reads the level
            for (unsigned int value = NX_DBG; value <= NX_FTL; ++value)
                NX_LOG(nxLogLevelEnum(static_cast<nxEnumValue>(value)), "level");
            return 0;
        };
        ASSERT_EQ(Run(logAll), 0);
        EXPECT_EQ(Output(), std::regex_replace(shown, std::regex("(...) "), "[$1] level\n")) << level;
    }
}

TEST_F(nxLogProcess, ConsoleAndFileHaveTheirForms)
{
    std::string const site = " thread 0 line 0 end \\[nxLogProcessTest.cpp:\\d+\\]";
    std::string const stamp = "\\[INF\\]\\[\\d\\d[A-Z][a-z]{2}\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}";
    struct
    {
        char const* console;
        char const* index;
        std::string output; // of a line on the console
        std::string file;   // of a line in the file
    } const rows[] = {
        {"", "no", stamp + "\\]" + site + "\n", stamp + "\\.000\\]" + site + "\r\n"},
        {" no", "YES", stamp + "\\]\\[\\d+\\]" + site + "\n", stamp + "\\.000\\]\\[\\d+\\]" + site + "\r\n"},
        {"Terse", "true", "\\[INF\\] thread 0 line 0 end\n", stamp + "\\.000\\]\\[\\d+\\]" + site + "\r\n"},
        {"false", "1", "", stamp + "\\.000\\]" + site + "\r\n"},
    };
    for (auto const& row : rows)
    {
        _environment["KVT_LOG_TO_CONSOLE"] = row.console;
        _environment["KVT_LOG_THREAD_INDEX"] = row.index;
        ASSERT_EQ(Run([] { return LogFromThreads(1, 1), 0; }), 0);
        EXPECT_TRUE(std::regex_match(Output(), std::regex(row.output))) << Output();
        std::string const log = TakeLog();
        EXPECT_TRUE(std::regex_match(log, std::regex(row.file))) << log;
    }
}

} // namespace
