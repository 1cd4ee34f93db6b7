// What whole processes leave behind: at their end, across forks, on disks that fail. Each host is a forked child.

#include "core/concurrency/nxFunctorQueue.h"
#include "core/concurrency/nxFunctorThreadPool.h"
#include "core/logging/nxConsoleLogDevice.h"
#include "core/logging/nxFileLogDevice.h"
#include "core/logging/nxLogSite.h"
#include "core/prices/nxPriceConverterHelper.h"
#include "core/process/nxApplicationData.h"
#include "core/process/nxCmdLineArgs.h"
#include "tests/Sanitizer.h"
#include "tests/concurrency/ForkDuringFirstUse.h"
#include "tests/faults/Faults.h"
#include "tests/logging/nxRecordingLogDevice.h"
#include "tests/prices/nxAllocationCount.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <regex>
#include <set>
#include <thread>
#include <tuple>

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>

// Threads of a forked child are meant here.
extern "C" char const* __tsan_default_options();

extern "C" char const* __tsan_default_options()
{
    return "die_after_fork=0";
}

namespace
{

using Counts = std::map<unsigned int, unsigned int>; // by thread

/// @return what a host that has done it ends with.
int Destroy()
{
    return nxLogManager::GetInstance().Destroy().IsOK() ? 0 : 1;
}

/// A host's own, which outlives all.
nxRecordingLogDevice& device = *new nxRecordingLogDevice;
std::atomic_flag hasEntered; // the device, by its own word

/// What a device does so that others meanwhile come as far as they can.
void EnterAndLinger()
{
    (void)hasEntered.test_and_set();
    hasEntered.notify_all();
    usleep(200000);
}

/// Forks a child that does nothing.
void ForkAndWait()
{
    pid_t const child = fork();
    child == 0 ? _exit(0) : void(waitpid(child, nullptr, 0));
}

void LogFromThreads(unsigned int threads, unsigned int lines)
{
    LogToFile();
    std::vector<std::jthread> workers;
    for (unsigned int i = 0; i < threads; ++i)
        workers.emplace_back([=] { LogLines(i, lines); });
}

/// Logs before `main` and after it, and at the end of a thread, in a host that asks for it.
struct EarlyAndLate
{
    explicit EarlyAndLate(unsigned int first) : thread(first)
    {
        LogLines(thread, isWanted ? 1 : 0);
    }
    ~EarlyAndLate()
    {
        LogLines(thread + 1, isWanted ? 1000 : 0);
    }

    static inline bool const isWanted = std::getenv("NX_EARLY_AND_LATE") != nullptr;
    unsigned int const thread;
};

EarlyAndLate const earlyAndLate(90);

std::string ReadFile(files::path const& path)
{
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

long LinesOf(std::string const& text)
{
    return std::count(text.begin(), text.end(), '\n');
}

/// Runs hosts, each in a directory of its own.
class nxLogProcess : public testing::Test
{
protected:
    /// A host ends by `exit` with what its body returns. @return that; negative for a hang.
    int Run(std::function<int()> const& body)
    {
        _directory.emplace();
        return RunHost(_directory->path, body, 100.0, _environment).value_or(-1);
    }

    /// @param name  "out" or "err": what the last host said there.
    std::string Read(char const* name) const
    {
        return ReadFile(_directory->path / name);
    }

    /// The log files in the order of their names.
    std::vector<files::path> LogFiles() const
    {
        std::set<files::path> paths;
        for (auto const& entry : files::recursive_directory_iterator(_directory->path))
            if (entry.path().extension() == ".log")
                paths.insert(entry.path());
        return {paths.begin(), paths.end()};
    }

    /// How many lines of each thread the files hold, each of them whole and in order.
    Counts CountLines() const
    {
        LogCount const count = CountLog(_directory->path);
        EXPECT_EQ(count.Faults(), 0u);
        return count.lines;
    }

    std::optional<Directory> _directory;
    Environment _environment;
};

// The figures of the soak and of exit races hold the usual ways.
TEST_F(nxLogProcess, LosesNothingByTheWayItEnds)
{
    std::map<std::string, std::function<int()>> const ends = {
        {"was destroyed before, after which nothing is written",
         []
         {
             (void)Destroy();
             LogLines(93, 10);
             nxFileLogDevice::GetInstance().Write(nxLog(NX_INF, "file", 1) << "thread 93 line 0 end");
             nxFileLogDevice::GetInstance().Flush();
             return Destroy();
         }},
        {"exits in a device",
         []
         {
             device.onWrite = [](std::string const& text) { text == "the end" ? std::exit(0) : void(); };
             nxLogManager::GetInstance().RegisterLogDevice(&device);
             NX_LOG(NX_FTL, "the end");
             return pause();
         }},
        {"exits in a device that the destruction waits for",
         []
         {
             device.onWrite = [](std::string const&) { EnterAndLinger(), std::exit(0); };
             nxLogManager::GetInstance().RegisterLogDevice(&device);
             hasEntered.wait(false);
             return Destroy() + 1;
         }},
        {"exits in a device while it is destroyed",
         []
         {
             static std::thread::id const destroyer = std::this_thread::get_id();
             device.onFlush = [] { std::this_thread::get_id() == destroyer ? std::exit(0) : void(); };
             nxLogManager::GetInstance().RegisterLogDevice(&device);
             return Destroy() + 1;
         }},
        {"exits in a device that writes while it is destroyed",
         []
         {
             static std::thread::id const destroyer = std::this_thread::get_id();
             device.onWrite = [](std::string const&)
             { std::this_thread::get_id() == destroyer ? std::exit(0) : void(); };
             nxLogManager::GetInstance().RegisterLogDevice(&device);
             NX_LOG(NX_INF, "what the destruction writes");
             return Destroy() + 1;
         }},
    };
    for (auto const& [end, body] : ends)
    {
        auto const logAndEnd = [&endIt = body]
        {
            LogFromThreads(4, 20000);
            return endIt();
        };
        ASSERT_EQ(Run(logAndEnd), 0) << end;
        EXPECT_EQ(CountLines(), (Counts{{0, 20000}, {1, 20000}, {2, 20000}, {3, 20000}})) << end;
    }
}

TEST_F(nxLogProcess, AFileThatIsNotRegisteredIsClosedAtTheEnd)
{
    auto const writeAlone = []
    {
        LogToFile();
        nxLogManager::GetInstance().UnregisterLogDevice(&nxFileLogDevice::GetInstance());
        nxFileLogDevice::GetInstance().Write(nxLog(NX_INF, "file", 1) << "thread 0 line 0 end");
        return 0;
    };
    ASSERT_EQ(Run(writeAlone), 0);
    EXPECT_EQ(CountLines(), (Counts{{0, 1}}));
}

TEST_F(nxLogProcess, MayLogFromStaticsThreadLocalsAndExitHandlers)
{
    if (EarlyAndLate::isWanted)
    {
        nxApplicationData::SetApplicationName("host");
        (void)std::atexit([] { LogLines(94, 10); }); // before the log's own: runs after it
        LogToFile();
        (void)std::atexit([] { LogLines(0, 200); });
        std::jthread([] { thread_local EarlyAndLate const late(95); });
        std::exit(0);
    }
    _environment["NX_EARLY_AND_LATE"] = "1";
    char const* const filter = "--gtest_filter=nxLogProcess.MayLogFromStatics*";
    std::string const program = files::read_symlink("/proc/self/exe");
    ASSERT_EQ(Run([=] { return execl(program.c_str(), "host", filter, nullptr); }), 0);
    EXPECT_EQ(CountLines(), (Counts{{0, 200}, {90, 1}, {91, 1000}, {94, 10}, {95, 1}, {96, 1000}}));
}

// "Nobody wakes the writer" holds for those who log, not for the end.
TEST_F(nxLogProcess, EndsWithoutWaitingForALongCycle)
{
    _environment["KVT_LOG_TIME_BETWEEN_FLUSHES"] = "3600";
    auto const endTwice = []
    {
        device.onWrite = [](std::string const&) { (void)std::fputs(".", stdout); };
        device.onFlush = [] { (void)std::fputs(" flushed", stdout); };
        nxLogManager::GetInstance().RegisterLogDevice(&device);
        LogFromThreads(1, 10);
        (void)alarm(20);
        (void)Destroy();
        // There is nobody to wait for, but the end comes again.
        nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(100.0));
        nxLogManager::GetInstance().RegisterLogDevice(&device);
        LogLines(0, 1);
        return 0;
    };
    ASSERT_EQ(Run(endTwice), 0);
    EXPECT_EQ(CountLines(), (Counts{{0, 10}}));
    EXPECT_EQ(Read("out"), ".......... flushed. flushed");
}

TEST_F(nxLogProcess, AForkedChildHasAWriterAndRepeatsNoConsoleLine)
{
    _environment["KVT_LOG_TO_CONSOLE"] = "brief";
    auto const logAndFork = []
    {
        LogFromThreads(1, 5);
        (void)sleep(1); // a name has a grain of a second
        nxLogManager::GetInstance().ImmediateWrite(nxLog(NX_INF, "file", 1) << "held back by the console");
        LogLines(0, 5, 5); // still on the queue
        // A key that changes later has no effect, on the child's writer either.
        (void)nxCmdLineArgs::GetInstance().SetEnvValue("KVT_LOG_TIME_BETWEEN_FLUSHES", "3600");
        pid_t const child = fork();
        if (child == 0)
        {
            LogLines(10, 5);
            Drain(); // the child's own writer brings them to the file, without an end of the process
            _exit(0);
        }
        return WaitFor(child, 50.0).value_or(1);
    };
    ASSERT_EQ(Run(logAndFork), 0);
    std::vector<files::path> const paths = LogFiles();
    ASSERT_EQ(paths.size(), 2u);
    // Named after their own times, so that a process number that comes again overwrites nothing.
    EXPECT_NE(paths[0].filename().string().substr(0, 11), paths[1].filename().string().substr(0, 11));
    EXPECT_EQ(CountLines(), (Counts{{0, 10}, {10, 5}}));
    EXPECT_EQ(LinesOf(Read("out")), 17); // one of them tells of the key
}

TEST_F(nxLogProcess, ADeviceOfAForkedChildMayLogDuringAnotherFork)
{
    auto const forkTwice = []
    {
        nxLogManager::GetInstance().RegisterLogDevice(&device);
        Drain(); // the writer rests: a sanitizer's allocator, which it starts in, doesn't survive a fork
        pid_t const child = fork();
        if (child != 0)
            return WaitFor(child, 50.0).value_or(1);
        device.onFlush = [] { NX_LOG(NX_INF, "flushed"); }; // the child has no writer yet
        ForkAndWait();
        device.onFlush = [] {};
        NX_LOG(NX_INF, "next"); // makes the writer
        Drain();
        _exit(device.messages == std::vector<std::string>{"flushed", "next"} ? 0 : 2);
    };
    EXPECT_EQ(Run(forkTwice), 0);
}

TEST_F(nxLogProcess, DevicesMayForkAndAskForWhatAForkWaitsFor)
{
    auto const nothing = [] {};
    auto const askForTheFirstTime = []
    {
        std::string text;
        (void)nxPriceConverterHelper::GetPriceAsString(nxDoubleValueWrapper(1.5),
                                                       NX_PRICE_FORMAT_FRACTION_HALF_TICK, text, true);
        (void)nxFileLogDevice::GetInstance();
    };
    using Action = std::function<void()>;
    std::pair<Action, Action> const rows[] = {
        {ForkAndWait, nothing}, // on the thread that destroys
        {ForkAndWait, [] { hasEntered.wait(false); }},
        {[] { device.onFlush = ForkAndWait; }, nothing},
        {askForTheFirstTime, [] { hasEntered.wait(false), ForkAndWait(); }},
    };
    for (auto const& row : rows)
    {
        auto const log = [&]
        {
            device.onWrite = [&](std::string const&) { EnterAndLinger(), row.first(); };
            nxLogManager::GetInstance().RegisterLogDevice(&device);
            NX_LOG(NX_INF, "the line");
            row.second();
            return Destroy();
        };
        EXPECT_EQ(Run(log), 0) << &row - rows;
    }
}

TEST_F(nxLogProcess, TheUsualLineAllocatesNothingAndABatchIsOneWrite)
{
    auto const count = []
    {
        auto const calls = []
        {
            std::string const counters = ReadFile("/proc/self/io");
            return std::stoi(counters.substr(counters.find("syscw: ") + 7));
        };
        LogToFile();
        nxLogManager::GetInstance().SetRecommendedBufferCapacity(20000);
        for (unsigned int i = 0; i < 500; ++i) // each leaves its room to others
            std::jthread([] { LogLines(1, 1); });
        Drain();
        nxAllocationCount const blocks;
        for (int cycle = 0; cycle < 2; ++cycle) // of which each has its vector
        {
            LogLines(0, 8000);
            nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(10.0));
        }
        std::printf("%zu blocks", blocks.Get());
        Drain();
        int const before = calls();
        LogLines(0, 1000);
        Drain();
        // The address sanitizer tries addresses by writing what is there to a pipe.
        return underAddressSanitizer ? 1 : calls() - before;
    };
    EXPECT_EQ(Run(count), 1);
    EXPECT_EQ(Read("out"), "0 blocks");
}

TEST_F(nxLogProcess, NoThreadOfTheLibraryHandlesSignals)
{
    auto const signalAll = []
    {
        LogToFile();
        nxFunctorQueue queue;
        queue.Create(new nxFunctorThreadPool(2));
        sigset_t set;
        sigset_t before;
        (void)sigemptyset(&set);
        (void)sigaddset(&set, SIGUSR1);
        (void)pthread_sigmask(SIG_BLOCK, &set, &before); // in all of the host's threads
        (void)kill(getpid(), SIGUSR1);                   // ends the process by the first thread that takes it
        Drain();
        return queue.Stop().IsOK() ? sigismember(&before, SIGUSR1) : 1; // the host took it
    };
    EXPECT_EQ(Run(signalAll), 0);
}

TEST_F(nxLogProcess, AFileThatTakesNothingIsSaidOnce)
{
    auto const logToFullDevice = []
    {
        files::create_symlink("/dev/full", nxFileLogDevice::GenerateFileName(".log", false, 1, true, true));
        LogFromThreads(1, 5);
        Drain();
        nxApplicationData::SetApplicationName("no/such");
        bool const isOpen = nxFileLogDevice::GetInstance().CloseAndReopenLogFile();
        usleep(1100000); // a second failure would be said after a second
        LogLines(0, 1);
        (void)nxLogManager::GetInstance().Destroy();
        return nxFileLogDevice::GetInstance().Destroy().IsOK() && !isOpen ? 0 : 1;
    };
    std::string const file = "Filename: .*_\\d{6}_\\d+\\.log";
    ASSERT_EQ(Run(logToFullDevice), 0);
    std::regex const told("Failed to write to the log file. " + file + ", errno: 28\n" +
                          "Failed to create log file. " + file + "\n" + "Lost 6 lines of the log file. " +
                          file + "\n");
    EXPECT_TRUE(std::regex_match(Read("err"), told)) << Read("err");
}

TEST_F(nxLogProcess, BeyondTheBacklogLinesAreCounted)
{
    constexpr unsigned int lines = 800000;
    constexpr unsigned int longLines = 70;
    auto const setLimit = [](rlim_t size)
    {
        rlimit const limit = {size, RLIM_INFINITY};
        return setrlimit(RLIMIT_FSIZE, &limit);
    };
    auto const meetALimit = [&]
    {
        (void)signal(SIGXFSZ, SIG_IGN);
        LogToFile();
        (void)setLimit(65536);
        for (unsigned int i = 0; i < lines; ++i)
            NX_LOG(NX_INF, "thread 0 line " << i << std::string(100, ' '));
        Drain();
        (void)setLimit(files::file_size(LogFiles().at(0)) + 20); // a notice has more
        NX_LOG(NX_INF, "no room yet");
        Drain();
        (void)setLimit(RLIM_INFINITY);
        NX_LOG(NX_INF, "room again");
        Drain();
        std::string const longLine(1 << 20, 'x'); // more than the backlog takes, and not flushed in between
        for (unsigned int i = 0; i < longLines; ++i)
            nxLogManager::GetInstance().ImmediateWrite(nxLog(NX_INF, "file", 1) << longLine);
        return 0;
    };
    ASSERT_EQ(Run(meetALimit), 0);
    EXPECT_LE(LinesOf(Read("err")), 20); // at most once a second
    std::string const log = ReadFile(LogFiles().at(0));
    std::size_t const place = log.find("[ERR]");
    ASSERT_NE(place, std::string::npos);
    EXPECT_EQ(log.find("[ERR]", place + 1), std::string::npos);
    std::string const line = "] thread 0 line ";
    long const lost = std::stol(log.substr(log.find("] ", place) + 2, 20));
    EXPECT_NE(log.find("] " + std::to_string(lost) + " lines lost [", place), log.npos);
    EXPECT_EQ(LinesOf(log) + lost, long(lines) + 3 + longLines);
    // The hole is where the line says.
    long const before = std::stol(log.substr(log.rfind(line, place) + line.size(), 20));
    EXPECT_EQ(std::stol(log.substr(log.find(line, place) + line.size(), 20)) - before - 1, lost);
}

TEST_F(nxLogProcess, PutsItsFilesIntoADirectoryOfTheDay)
{
    std::string const day = nxDateTime().GetAsString("%d%b%Y");
    auto const show = [](std::string const& directory)
    {
        (void)nxCmdLineArgs::GetInstance().SetEnvValue("KVT_LOG_DIRECTORY", directory); // read at each call
        std::printf("%s\n", nxFileLogDevice::GenerateLogDirectoryFilenamePrefix(nxDateTime()).c_str());
    };
    auto const showAll = [&]
    {
        show("log");
        show("log/");
        files::remove("log/" + day);
        (void)std::ofstream("log/" + day); // a file in the place of the directory: the one above it serves
        show("log");
        show("no/parent");
        return 0;
    };
    ASSERT_EQ(Run(showAll), 0);
    EXPECT_EQ(Read("out"), "log/" + day + "/\nlog//" + day + "/\nFailed to create directory log/" + day +
                               ", errno: 17\nlog/\nFailed to create directory no/parent, errno: 2\n\n");
}

TEST_F(nxLogProcess, CutsOverAfterTheLineThatExceedsTheLimitAndTriesAgain)
{
    auto const blockTheSecondFile = []
    {
        LogToFile(300);
        std::string const second = nxFileLogDevice::GenerateFileName(".log", true, 2, true, true);
        files::create_directory(second);
        LogLines(0, 10); // some 70 bytes each, and one batch
        Drain();
        LogLines(1, 1);
        Drain();
        files::remove(second);
        usleep(1100000); // one attempt a second
        LogLines(2, 1);
        Drain();
        LogLines(3, 6);
        return 0;
    };
    ASSERT_EQ(Run(blockTheSecondFile), 0);
    std::regex const told("Failed to create log file. Filename: .*_2.log\n");
    EXPECT_TRUE(std::regex_match(Read("err"), told)) << Read("err");
    std::string seen;
    for (files::path const& path : LogFiles())
        seen += path.stem().string().back() + std::to_string(LinesOf(ReadFile(path))) + ' ';
    ASSERT_EQ(seen, "15 26 31 "); // the file's number and its lines
    std::string const log = ReadFile(LogFiles().at(1));
    std::regex const resumed("\\[ERR\\].* 7 lines lost .*\r\n(.* thread 3 line [0-4] end .*\r\n)*");
    EXPECT_TRUE(std::regex_match(log, resumed)) << log;
}

TEST_F(nxLogProcess, ALargeQueueIsSaidOnce)
{
    auto const fillQueue = []
    {
        nxLogEntriesQueue queue;
        for (int i = 0; i < 1100000; ++i)
            queue.Push(nxLog(NX_INF, "file", 1) << "line");
        return 0;
    };
    ASSERT_EQ(Run(fillQueue), 0);
    EXPECT_EQ(Read("err"), "The log's queue has grown to 524288 statements: its devices are slow.\n");
}

TEST_F(nxLogProcess, AReopeningLeavesEarlierLinesInTheOldFile)
{
    auto const reopen = []
    {
        LogFromThreads(1, 100);
        (void)sleep(1); // a name has a grain of a second
        bool const isOpen = nxFileLogDevice::GetInstance().CloseAndReopenLogFile();
        LogLines(1, 100);
        return isOpen && !nxFileLogDevice::GetInstance().Create({}) ? 0 : 1; // which is refused a second file
    };
    ASSERT_EQ(Run(reopen), 0);
    std::vector<files::path> const paths = LogFiles();
    ASSERT_EQ(paths.size(), 2u);
    std::string const old = ReadFile(paths[0]);
    EXPECT_EQ(LinesOf(old), 101);
    EXPECT_NE(old.find("Closing log file: " + paths[0].string()), std::string::npos);
    std::string const told = "Successfully opened log file: " + paths[1].string() + ", Previous log file: ";
    EXPECT_NE(ReadFile(paths[1]).find(told + paths[0].string()), std::string::npos);
    EXPECT_EQ(CountLines(), (Counts{{0, 100}, {1, 100}}));
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
        EXPECT_EQ(Read("out"), std::regex_replace(shown, std::regex("(...) "), "[$1] level\n")) << level;
    }
}

TEST_F(nxLogProcess, ConsoleAndFileHaveTheirForms)
{
    std::string const site = " thread 0 line \\d end \\[Faults.cpp:\\d+\\]";
    std::string const stamp = "\\[INF\\]\\[\\d\\d[A-Z][a-z]{2}\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}";
    std::string const indexed = "\\]\\[\\d+\\]" + site;
    std::string const plain = "\\]" + site;
    std::tuple<char const*, char const*, std::string, std::string> const rows[] = {
        {"", "no", stamp + plain + "\n", plain},
        {" no", "YES", stamp + indexed + "\n", indexed},
        {"Terse", "true", "\\[INF\\] thread 0 line \\d end\n", indexed},
        {"false", "1", "", plain},
    };
    std::regex const time(":(\\d\\d\\.\\d{3})\\.000\\]");
    auto const logNowAndThen = []
    {
        LogToFile();
        for (unsigned int line = 0; line < 4; ++line, usleep(20000))
            LogLines(0, 1, line);
        return 0;
    };
    for (auto const& [console, index, output, file] : rows)
    {
        _environment["KVT_LOG_TO_CONSOLE"] = console;
        _environment["KVT_LOG_THREAD_INDEX"] = index;
        ASSERT_EQ(Run(logNowAndThen), 0);
        EXPECT_TRUE(std::regex_match(Read("out"), std::regex("(" + output + "){4}"))) << Read("out");
        std::string const log = ReadFile(LogFiles().at(0));
        EXPECT_TRUE(std::regex_match(log, std::regex("(" + stamp + "\\.000" + file + "\r\n){4}"))) << log;
        // Lines of one second have their own milliseconds.
        std::set<std::string> const times(std::sregex_token_iterator(log.begin(), log.end(), time, 1), {});
        EXPECT_EQ(times.size(), 4u) << log;
    }
}

} // namespace

TEST(nxConsoleLogDevice, CanBeAskedForInAChildThatWasForkedDuringItsFirstUse)
{
    EXPECT_EQ(CountForksThatMeetTheFirstUse(30, [] { (void)nxConsoleLogDevice::GetInstance(); }), 0);
}
