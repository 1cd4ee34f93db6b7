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

/// Runs hosts in a directory of their own.
class nxLogProcess : public testing::Test
{
protected:
    /// A host ends by `exit` with what its body returns. @return that; negative for a hang.
    int Run(std::function<int()> const& body) const
    {
        for (char const* const name : {"out", "err"})
            files::remove(_directory.path / name);
        return RunHost(_directory.path, body, 100.0, _environment).value_or(-1);
    }

    /// @param name  "out" or "err": what the last host said there.
    std::string Read(char const* name) const
    {
        return ReadFile(_directory.path / name);
    }

    /// The log files in the order of their names.
    std::vector<files::path> LogFiles() const
    {
        std::vector<files::path> paths;
        for (auto const& entry : files::recursive_directory_iterator(_directory.path))
            if (entry.path().extension() == ".log")
                paths.push_back(entry.path());
        std::sort(paths.begin(), paths.end());
        return paths;
    }

    /// How many lines of each thread the files hold, each of them whole and in order; the files are removed.
    Counts TakeLog() const
    {
        LogCount const count = CountLog(_directory.path);
        EXPECT_EQ(count.Faults(), 0u);
        for (files::path const& path : LogFiles())
            files::remove(path);
        return count.lines;
    }

    Directory const _directory;
    Environment _environment;
};

TEST_F(nxLogProcess, LosesNothingByTheWayItEnds)
{
    using Size = nxValueWrapper<unsigned long long, -1, -2>;
    std::map<std::string, std::function<int()>> const ends = {
        {"returns, and was refused a second file",
         [] { return nxFileLogDevice::GetInstance().Create(Size()) ? 1 : 0; }},
        {"was destroyed before, after which nothing is written",
         []
         {
             (void)nxLogManager::GetInstance().Destroy();
             LogLines(93, 10);
             nxLog line(NX_INF, "file", 1);
             line << "thread 93 line 0 end";
             nxFileLogDevice::GetInstance().Write(line);
             nxFileLogDevice::GetInstance().Flush();
             return nxLogManager::GetInstance().Destroy().IsOK() ? 0 : 1;
         }},
        {"exits in a device",
         []
         {
             static auto* const device = new nxRecordingLogDevice; // outlives all
             device->onWrite = [](std::string const& text) { text == "the end" ? std::exit(0) : void(); };
             nxLogManager::GetInstance().RegisterLogDevice(device);
             NX_LOG(NX_FTL, "the end");
             return pause();
         }},
        {"exits in a device that the destruction waits for",
         []
         {
             static auto* const device = new nxRecordingLogDevice; // outlives all
             static std::atomic<bool> hasEntered = false;
             device->onWrite = [](std::string const&)
             {
                 hasEntered = true;
                 hasEntered.notify_all();
                 usleep(200000);
                 std::exit(0);
             };
             nxLogManager::GetInstance().RegisterLogDevice(device);
             hasEntered.wait(false);
             return nxLogManager::GetInstance().Destroy().IsOK() ? 1 : 2;
         }},
        {"exits in a device while it is destroyed",
         []
         {
             static auto* const device = new nxRecordingLogDevice; // outlives all
             static std::thread::id const destroyer = std::this_thread::get_id();
             device->onFlush = [] { std::this_thread::get_id() == destroyer ? std::exit(0) : void(); };
             nxLogManager::GetInstance().RegisterLogDevice(device);
             return nxLogManager::GetInstance().Destroy().IsOK() ? 1 : 2;
         }},
    };
    for (bool const isManagerOlder : {false, true}) // than the device
        for (auto const& [end, body] : ends)
        {
            auto const logAndEnd = [&, &endIt = body]
            {
                if (isManagerOlder)
                    NX_LOG(NX_INF, "first");
                LogFromThreads(4, 20000);
                return endIt();
            };
            ASSERT_EQ(Run(logAndEnd), 0) << end;
            EXPECT_EQ(TakeLog(), (Counts{{0, 20000}, {1, 20000}, {2, 20000}, {3, 20000}})) << end;
        }
}

TEST_F(nxLogProcess, AFileThatIsNotRegisteredIsClosedAtTheEnd)
{
    auto const writeAlone = []
    {
        LogToFile();
        nxLogManager::GetInstance().UnregisterLogDevice(&nxFileLogDevice::GetInstance());
        nxLog line(NX_INF, "file", 1);
        line << "thread 0 line 0 end";
        nxFileLogDevice::GetInstance().Write(line);
        return 0;
    };
    ASSERT_EQ(Run(writeAlone), 0);
    EXPECT_EQ(TakeLog(), (Counts{{0, 1}}));
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
    EXPECT_EQ(TakeLog(), (Counts{{0, 200}, {90, 1}, {91, 1000}, {94, 10}, {95, 1}, {96, 1000}}));
}

// "Nobody wakes the writer" holds for those who log, not for the end.
TEST_F(nxLogProcess, EndsWithoutWaitingForALongCycle)
{
    _environment["KVT_LOG_TIME_BETWEEN_FLUSHES"] = "3600";
    auto const log = [](bool isDestroyed)
    {
        static auto* const device = new nxRecordingLogDevice; // outlives all
        device->onWrite = [](std::string const&) { (void)std::fputs(".", stdout); };
        device->onFlush = [] { (void)std::fputs(" flushed", stdout); };
        nxLogManager::GetInstance().RegisterLogDevice(device);
        LogFromThreads(1, 10);
        (void)alarm(20);
        if (isDestroyed && nxLogManager::GetInstance().Destroy().IsOK())
        {
            // There is nobody to wait for, but the end comes again.
            nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(100.0));
            nxLogManager::GetInstance().RegisterLogDevice(device);
            LogLines(0, 1);
        }
        return 0;
    };
    for (bool const isDestroyed : {false, true})
    {
        ASSERT_EQ(Run([=] { return log(isDestroyed); }), 0);
        EXPECT_EQ(TakeLog(), (Counts{{0, 10}}));
        EXPECT_EQ(Read("out"), isDestroyed ? ".......... flushed. flushed" : ".......... flushed");
    }
}

TEST_F(nxLogProcess, AForkedChildHasAWriterAndRepeatsNoConsoleLine)
{
    _environment["KVT_LOG_TO_CONSOLE"] = "brief";
    auto const logAndFork = []
    {
        LogFromThreads(1, 5);
        (void)sleep(1); // a name has a grain of a second
        nxLog line(NX_INF, "file", 1);
        line << "written, and held back by the console";
        nxLogManager::GetInstance().ImmediateWrite(line);
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
    EXPECT_EQ(TakeLog(), (Counts{{0, 10}, {10, 5}}));
    EXPECT_EQ(LinesOf(Read("out")), 17); // one of them tells of the key
}

TEST_F(nxLogProcess, ADeviceOfAForkedChildMayLogDuringAnotherFork)
{
    auto const forkTwice = []
    {
        static auto* const device = new nxRecordingLogDevice; // outlives all
        nxLogManager::GetInstance().RegisterLogDevice(device);
        pid_t const child = fork();
        if (child != 0)
            return WaitFor(child, 50.0).value_or(1);
        auto const forkOnce = [] { fork() == 0 ? _exit(0) : void(); };
        device->onFlush = [] { NX_LOG(NX_INF, "flushed"); };
        forkOnce();
        device->onFlush = [] {};
        device->onWrite = [=](std::string const& text)
        {
            if (text != "question")
                return;
            std::thread(forkOnce).detach();
            usleep(200000); // the fork has come as far as it can
            NX_LOG(NX_INF, "answer");
        };
        nxLog line(NX_INF, "file", 1);
        line << "question";
        nxLogManager::GetInstance().ImmediateWrite(line);
        NX_LOG(NX_INF, "next"); // makes the writer
        Drain();
        std::vector<std::string> const all = {"question", "flushed", "answer", "next"};
        _exit(device->messages == all ? 0 : 2);
    };
    EXPECT_EQ(Run(forkTwice), 0);
}

TEST_F(nxLogProcess, DevicesMayForkAndAskForWhatAForkWaitsFor)
{
    static auto* const device = new nxRecordingLogDevice; // outlives all
    static std::atomic<bool> hasEntered = false;
    constexpr auto forkAndWait = []
    {
        pid_t const child = fork();
        child == 0 ? _exit(0) : void(waitpid(child, nullptr, 0));
    };
    auto const run = [this](std::function<void()> const& inDevice, std::function<void()> const& meanwhile)
    {
        auto const log = [&]
        {
            device->onWrite = [&](std::string const& text)
            {
                if (text != "the line")
                    return;
                hasEntered = true;
                hasEntered.notify_all();
                usleep(200000); // the others have come as far as they can
                inDevice();
            };
            nxLogManager::GetInstance().RegisterLogDevice(device);
            NX_LOG(NX_INF, "the line");
            meanwhile();
            return nxLogManager::GetInstance().Destroy().IsOK() ? 0 : 1;
        };
        return Run(log);
    };
    auto const nothing = [] {};
    EXPECT_EQ(run(forkAndWait, nothing), 0); // on the thread that destroys
    EXPECT_EQ(run(forkAndWait, [] { hasEntered.wait(false); }), 0);
    EXPECT_EQ(run([=] { device->onFlush = forkAndWait; }, nothing), 0);
    EXPECT_EQ(run(
                  []
                  {
                      std::string text;
                      (void)nxPriceConverterHelper::GetPriceAsString(
                          nxDoubleValueWrapper(1.5), NX_PRICE_FORMAT_FRACTION_HALF_TICK, text, true);
                      (void)nxFileLogDevice::GetInstance(); // for the first time
                  },
                  [=]
                  {
                      hasEntered.wait(false);
                      forkAndWait();
                  }),
              0);
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
        for (int i = 0; i < 4; ++i)
        {
            LogLines(0, 1000);
            Drain();
        }
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
        nxLog longLine(NX_INF, "file", 1); // more of them than the backlog takes, and not flushed in between
        longLine << std::string(1 << 20, 'x');
        for (unsigned int i = 0; i < longLines; ++i)
            nxLogManager::GetInstance().ImmediateWrite(longLine);
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

TEST_F(nxLogProcess, CutsOverAfterTheLineThatExceedsTheLimit)
{
    auto const logLongLines = []
    {
        LogToFile(1000);
        for (int i = 0; i < 7; ++i)
            NX_LOG(NX_INF, std::string(350, 'x')); // some 400 bytes in all
        return 0;
    };
    ASSERT_EQ(Run(logLongLines), 0);
    std::string seen;
    for (files::path const& path : LogFiles())
        seen += path.stem().string().back() + std::to_string(LinesOf(ReadFile(path))) + ' ';
    EXPECT_EQ(seen, "13 23 31 "); // the file's number and its lines
}

TEST_F(nxLogProcess, AFailedCutOverIsTriedAgain)
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
        LogLines(3, 1);
        return 0;
    };
    ASSERT_EQ(Run(blockTheSecondFile), 0);
    std::regex const told("Failed to create log file. Filename: .*_2.log\n");
    EXPECT_TRUE(std::regex_match(Read("err"), told)) << Read("err");
    std::vector<files::path> const paths = LogFiles();
    ASSERT_EQ(paths.size(), 2u);
    long const lost = 10 - LinesOf(ReadFile(paths[0])) + 2;
    std::regex const resumed("\\[ERR\\].* " + std::to_string(lost) +
                             " lines lost .*\r\n.* thread 3 line 0 end .*\r\n");
    EXPECT_TRUE(std::regex_match(ReadFile(paths[1]), resumed)) << ReadFile(paths[1]);
}

TEST_F(nxLogProcess, ALargeQueueIsSaid)
{
    auto const fillQueue = []
    {
        nxLogEntriesQueue queue;
        for (int i = 0; i < 530000; ++i)
        {
            nxLog line(NX_INF, "file", 1);
            queue.Push(line);
        }
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
        return isOpen ? 0 : 1;
    };
    ASSERT_EQ(Run(reopen), 0);
    std::vector<files::path> const paths = LogFiles();
    ASSERT_EQ(paths.size(), 2u);
    std::string const old = ReadFile(paths[0]);
    EXPECT_EQ(LinesOf(old), 101);
    EXPECT_NE(old.find("Closing log file: " + paths[0].string()), std::string::npos);
    std::string const told = "Successfully opened log file: " + paths[1].string() + ", Previous log file: ";
    EXPECT_NE(ReadFile(paths[1]).find(told + paths[0].string()), std::string::npos);
    EXPECT_EQ(TakeLog(), (Counts{{0, 100}, {1, 100}}));
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
    std::string const site = " thread 0 line 0 end \\[Faults.cpp:\\d+\\]";
    std::string const stamp = "\\[INF\\]\\[\\d\\d[A-Z][a-z]{2}\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}";
    std::string const indexed = "\\]\\[\\d+\\]" + site;
    std::string const plain = "\\]" + site;
    std::tuple<char const*, char const*, std::string, std::string> const rows[] = {
        {"", "no", stamp + plain, plain},
        {" no", "YES", stamp + indexed, indexed},
        {"Terse", "true", "\\[INF\\] thread 0 line 0 end", indexed},
        {"false", "1", "", plain},
    };
    for (auto const& [console, index, output, file] : rows)
    {
        _environment["KVT_LOG_TO_CONSOLE"] = console;
        _environment["KVT_LOG_THREAD_INDEX"] = index;
        ASSERT_EQ(Run([] { return LogFromThreads(1, 1), 0; }), 0);
        EXPECT_TRUE(std::regex_match(Read("out"), std::regex(output + (output.empty() ? "" : "\n"))))
            << Read("out");
        std::string const log = ReadFile(LogFiles().at(0));
        EXPECT_TRUE(std::regex_match(log, std::regex(stamp + "\\.000" + file + "\r\n"))) << log;
        (void)TakeLog();
    }
}

TEST_F(nxLogProcess, LinesOfOneSecondHaveTheirOwnMilliseconds)
{
    auto const logNowAndThen = []
    {
        LogToFile();
        for (unsigned int line = 0; line < 4; ++line, usleep(20000))
            LogLines(0, 1, line);
        return 0;
    };
    ASSERT_EQ(Run(logNowAndThen), 0);
    std::string const log = ReadFile(LogFiles().at(0));
    std::regex const time(":(\\d\\d\\.\\d{3})\\.000\\] thread");
    std::set<std::string> const times(std::sregex_token_iterator(log.begin(), log.end(), time, 1), {});
    EXPECT_EQ(times.size(), 4u) << log;
}

} // namespace

TEST(nxConsoleLogDevice, CanBeAskedForInAChildThatWasForkedDuringItsFirstUse)
{
    EXPECT_EQ(CountForksThatMeetTheFirstUse(30, [] { (void)nxConsoleLogDevice::GetInstance(); }), 0);
}
