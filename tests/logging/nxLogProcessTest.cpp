// What whole processes leave behind: at their end, across forks, on disks that fail.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include <sys/wait.h>

namespace
{

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define NX_IS_ADDRESS_SANITIZED
#endif
#endif
#ifdef NX_IS_ADDRESS_SANITIZED
constexpr bool isAddressSanitized = true;
#else
constexpr bool isAddressSanitized = false;
#endif

namespace files = std::filesystem;
using Counts = std::map<unsigned int, unsigned int>; // by thread

std::string ReadFile(files::path const& path)
{
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

/// Runs scenarios in a directory of their own.
class nxLogProcess : public testing::Test
{
protected:
    nxLogProcess()
    {
        std::string name = (files::temp_directory_path() / "nxlogXXXXXX").string();
        _directory = mkdtemp(name.data());
        _environment = {{"KVT_LOG_DIRECTORY", (_directory / "log").string()},
                        {"KVT_LOG_TO_CONSOLE", "NO"},
                        {"TSAN_OPTIONS", "die_after_fork=0"}}; // threads of a forked child are meant here
    }

    ~nxLogProcess() override
    {
        std::error_code error;
        files::remove_all(_directory, error);
    }

    /// @return the exit code; above 128 for a signal, 124 for a hang.
    int Run(std::string const& scenario)
    {
        std::string command = "cd " + _directory.string() + " && env";
        for (auto const& [key, value] : _environment)
            command += " " + key + "='" + value + "'";
        command += " timeout 100 " NX_SCENARIO " " + scenario + " >out 2>err";
        int const status = std::system(command.c_str());
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

    std::string Log() const
    {
        std::string text;
        for (files::path const& path : LogFiles())
            text += ReadFile(path);
        return text;
    }

    /// Counts the lines "thread T line N end" of each thread; each N must follow on the one before, and every line be
    /// whole. Other lines are collected.
    Counts Count(std::string const& text)
    {
        Counts counts;
        _others.clear();
        EXPECT_TRUE(text.empty() || text.ends_with("\r\n")) << "torn: " << text.substr(text.rfind('\n') + 1);
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);)
        {
            unsigned int thread = 0;
            unsigned int number = 0;
            std::size_t const message = line.find("] thread ");
            if (message == std::string::npos ||
                std::sscanf(line.c_str() + message, "] thread %u line %u end", &thread, &number) != 2)
                _others.push_back(line);
            else if (counts[thread]++ != number)
            {
                ADD_FAILURE() << "after line " << counts[thread] - 2 << ": " << line;
                break;
            }
        }
        return counts;
    }

    files::path _directory;
    std::map<std::string, std::string> _environment;
    std::vector<std::string> _others;
};

TEST_F(nxLogProcess, NothingIsLostAtTheEndAndNothingWrittenAfterDestroy)
{
    for (char const* const end : {"plain-exit", "destroy"})
    {
        files::remove_all(_directory / "log");
        ASSERT_EQ(Run(std::string(end) + " 8 200000"), 0);
        Counts expected;
        for (unsigned int thread = 0; thread < 8; ++thread)
            expected[thread] = 200000;
        EXPECT_EQ(Count(Log()), expected) << end;
    }
}

// A line before the device makes the manager the older of the two.
TEST_F(nxLogProcess, ManagerMayBeOlderThanTheDevice)
{
    ASSERT_EQ(Run("manager-first 1 200"), 0);
    EXPECT_EQ(Count(Log()), (Counts{{0, 200}}));
    EXPECT_EQ(_others.size(), 1u);
}

TEST_F(nxLogProcess, WritesAllAtOnceWhenToldTo)
{
    _environment["KVT_LOG_FORCE_FLUSH"] = "yes";
    EXPECT_EQ(Run("killed 3 100"), 128 + SIGKILL);
    EXPECT_EQ(Count(Log()), (Counts{{0, 100}, {1, 100}, {2, 100}}));
}

TEST_F(nxLogProcess, MayLogFromStaticsThreadLocalsAndExitHandlers)
{
    ASSERT_EQ(Run("exit-handlers"), 0);
    EXPECT_EQ(Count(Log()), (Counts{{0, 200}, {92, 1}}));

    // A static that logs in its constructor builds the manager, and is itself destroyed before the log ends.
    files::remove_all(_directory / "log");
    _environment["SCENARIO_STATICS"] = "1";
    ASSERT_EQ(Run("exit-handlers"), 0);
    EXPECT_EQ(Count(Log()), (Counts{{0, 200}, {90, 1}, {91, 1000}, {92, 1}, {94, 10}}));
}

TEST_F(nxLogProcess, MayEndAnywhere)
{
    std::vector<std::string> ends(20, "exit-while-logging"); // a race
    ends.insert(ends.end(), {"exit-on-other-thread", "exit-in-device"});
    for (std::string const& end : ends)
    {
        files::remove_all(_directory / "log");
        ASSERT_EQ(Run(end), 0) << end;
        ASSERT_EQ(Count(Log())[0], 200u) << end;
    }
}

// "Nobody wakes the writer" holds for those who log, not for the end.
TEST_F(nxLogProcess, EndsWithoutWaitingForALongCycle)
{
    _environment["KVT_LOG_TIME_BETWEEN_FLUSHES"] = "3600";
    auto const start = std::chrono::steady_clock::now();
    ASSERT_EQ(Run("plain-exit 1 10"), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    EXPECT_EQ(Count(Log()), (Counts{{0, 10}}));
}

TEST_F(nxLogProcess, AForkedChildWritesAFileOfItsOwn)
{
    if (isAddressSanitized)
        GTEST_SKIP() << "the locks of the sanitizer's allocator stay as a fork finds them";
    ASSERT_EQ(Run("fork 30"), 0);
    unsigned int children = 0;
    for (files::path const& path : LogFiles())
    {
        Counts counts = Count(ReadFile(path));
        bool const isChild = counts.count(10) != 0;
        children += isChild ? 1 : 0;
        EXPECT_EQ(counts.size(), isChild ? 1u : 5u) << path;
        EXPECT_EQ(counts[isChild ? 10 : 0], isChild ? 20u : 30u) << path;
    }
    EXPECT_EQ(children, 30u);
}

TEST_F(nxLogProcess, AForkedChildHasAWriterAndRepeatsNoConsoleLine)
{
    _environment["KVT_LOG_TO_CONSOLE"] = "brief";
    ASSERT_EQ(Run("forked-writer"), 0);
    std::vector<files::path> const paths = LogFiles();
    ASSERT_EQ(paths.size(), 2u);
    // Named after their own times, so that a process number that comes again overwrites nothing.
    std::size_t const upToTime = std::string("scenario_093005_").size();
    EXPECT_NE(paths[0].filename().string().substr(0, upToTime),
              paths[1].filename().string().substr(0, upToTime));
    EXPECT_EQ(Count(Log()), (Counts{{0, 5}, {10, 5}}));
    EXPECT_EQ(Count(std::regex_replace(Output(), std::regex("\n"), "\r\n")), (Counts{{0, 5}, {10, 5}}));
}

TEST_F(nxLogProcess, TheUsualLineAllocatesNothing)
{
    EXPECT_EQ(Run("allocations"), 0);
}

TEST_F(nxLogProcess, ABatchIsOneWrite)
{
    if (isAddressSanitized)
        GTEST_SKIP() << "the sanitizer tries addresses by writing what is there to a pipe";
    EXPECT_EQ(Run("writes"), 1);
}

TEST_F(nxLogProcess, TheWriterHandlesNoSignals)
{
    EXPECT_EQ(Run("signals"), 0);
}

TEST_F(nxLogProcess, AFileThatCannotBeCreatedIsSaidOnce)
{
    _environment["SCENARIO_NAME"] = "no/such";
    ASSERT_EQ(Run("cannot-create"), 0);
    EXPECT_TRUE(LogFiles().empty());
    EXPECT_TRUE(
        std::regex_match(Errors(), std::regex("Failed to create log file. Filename: .*/no/such_\\d{6}_\\d+"
                                              "\\.log\n")))
        << Errors();
}

TEST_F(nxLogProcess, WithoutADirectoryTheFileGoesToTheCurrentOne)
{
    _environment["KVT_LOG_DIRECTORY"] = (_directory / "no" / "parent").string();
    ASSERT_EQ(Run("plain-exit 1 10"), 0);
    EXPECT_EQ(Output(),
              "Failed to create directory " + (_directory / "no" / "parent").string() + ", errno: 2\n");
    ASSERT_EQ(LogFiles().size(), 1u);
    EXPECT_EQ(LogFiles().front().parent_path(), _directory);
}

TEST_F(nxLogProcess, ADeviceMayLogWhileAllIsWrittenAtOnce)
{
    _environment["KVT_LOG_FORCE_FLUSH"] = "TRUE";
    ASSERT_EQ(Run("nested"), 0);
    EXPECT_EQ(Output(), "outer a\ninner a\ninner b\nflush\nflush\nouter b\nflush\nflush\n");
}

TEST_F(nxLogProcess, AShortWantOfRoomLosesNothing)
{
    ASSERT_EQ(Run("disk-full 2000"), 0);
    EXPECT_EQ(Count(Log()), (Counts{{0, 2000}}));
    EXPECT_EQ(_others.size(), 6u);
    std::string const errors = Errors();
    EXPECT_EQ(errors.find("Failed to write to the log file. Filename: "), 0u) << errors;
    EXPECT_LE(std::count(errors.begin(), errors.end(), '\n'), 2); // at most once a second
}

TEST_F(nxLogProcess, BeyondTheBacklogLinesAreCounted)
{
    constexpr unsigned int lines = 800000;
    ASSERT_EQ(Run("disk-full " + std::to_string(lines)), 0);
    std::string const log = Log();
    std::size_t const place = log.find(" lines lost");
    ASSERT_NE(place, std::string::npos);
    EXPECT_EQ(log.find(" lines lost", place + 1), std::string::npos);
    std::size_t const begin = log.rfind(' ', place - 1) + 1;
    unsigned long const lost = std::stoul(log.substr(begin));
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n') + static_cast<long>(lost), long(lines) + 6 + 1);
    // The hole is where the line says.
    unsigned long before = 0;
    unsigned long after = 0;
    ASSERT_EQ(std::sscanf(log.c_str() + log.rfind("] thread 0", place), "] thread 0 line %lu", &before), 1);
    ASSERT_EQ(std::sscanf(log.c_str() + log.find("] thread 0", place), "] thread 0 line %lu", &after), 1);
    EXPECT_EQ(after - before - 1, lost);
}

TEST_F(nxLogProcess, CutsOverAfterTheLineThatExceedsTheLimit)
{
    ASSERT_EQ(Run("cut-over"), 0);
    std::vector<files::path> const paths = LogFiles();
    ASSERT_EQ(paths.size(), 3u);
    EXPECT_EQ(Count(ReadFile(paths[0])), (Counts{{0, 3}}));
    EXPECT_TRUE(std::regex_match(paths[2].filename().string(), std::regex("scenario_\\d{6}_\\d+_3\\.log")));
    EXPECT_EQ(Count(Log()), (Counts{{0, 7}}));
}

TEST_F(nxLogProcess, AReopeningLeavesEarlierLinesInTheOldFile)
{
    ASSERT_EQ(Run("reopen 0"), 0);
    std::vector<files::path> const paths = LogFiles();
    ASSERT_EQ(paths.size(), 2u);
    std::string const old = paths[0].string();
    EXPECT_EQ(Count(ReadFile(paths[0])), (Counts{{0, 100}}));
    EXPECT_NE(_others.at(0).find("Closing log file: " + old), std::string::npos);
    EXPECT_EQ(Count(ReadFile(paths[1])), (Counts{{1, 100}}));
    EXPECT_NE(_others.at(0).find("Successfully opened log file: " + paths[1].string() +
                                 ", Previous log file: " + old),
              std::string::npos);

    // A directory that vanished comes back with the next file.
    ASSERT_EQ(Run("reopen 1"), 0);
    EXPECT_EQ(Count(Log()), (Counts{{1, 100}}));
}

TEST_F(nxLogProcess, ReadsItsLevel)
{
    struct
    {
        char const* level;
        char const* shown;
    } const rows[] = {
        {"", "INF PB1 PB2 PB3 WRN ERR FTL "},
        {"0", "DBG INF PB1 PB2 PB3 WRN ERR FTL "},
        {"7", "FTL "},
        {" +7x", "FTL "},
        {"none", "DBG INF PB1 PB2 PB3 WRN ERR FTL "},
        {"8", "DBG INF PB1 PB2 PB3 WRN ERR FTL "},
        {"-1", "DBG INF PB1 PB2 PB3 WRN ERR FTL "},
        {"-29", "DBG INF PB1 PB2 PB3 WRN ERR FTL "},
        {"99999999999999999999", "DBG INF PB1 PB2 PB3 WRN ERR FTL "},
        {"-99999999999999999999", "DBG INF PB1 PB2 PB3 WRN ERR FTL "},
    };
    _environment["KVT_LOG_TO_CONSOLE"] = "brief";
    for (auto const& row : rows)
    {
        _environment["KVT_LOG_LEVEL"] = row.level;
        ASSERT_EQ(Run("levels"), 0);
        std::string const expected =
            std::regex_replace(std::string(row.shown), std::regex("(...) "), "[$1] level\n");
        EXPECT_EQ(Output(), expected) << row.level;
    }
}

TEST_F(nxLogProcess, ConsoleAndFileHaveTheirForms)
{
    struct
    {
        char const* console;
        char const* index;
        char const* output; // of a line on the console
        char const* file;   // of a line in the file
    } const rows[] = {
        {"", "no",
         "\\[INF\\]\\[\\d\\d[A-Z][a-z]{2}\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\] thread 0 line 0 end "
         "\\[nxLogScenario.cpp:\\d+\\]\n",
         "\\[INF\\]\\[\\d\\d[A-Z][a-z]{2}\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\.000\\] thread 0 line 0 end "
         "\\[nxLogScenario.cpp:\\d+\\]\r\n"},
        {" no", "YES", "\\[INF\\]\\[.{20}\\]\\[\\d+\\] thread 0 line 0 end \\[nxLogScenario.cpp:\\d+\\]\n",
         "\\[INF\\]\\[.{24}\\]\\[\\d+\\] thread 0 line 0 end \\[nxLogScenario.cpp:\\d+\\]\r\n"},
        {"Terse", "true", "\\[INF\\] thread 0 line 0 end\n",
         "\\[INF\\]\\[.{24}\\]\\[\\d+\\] thread 0 line 0 end \\[nxLogScenario.cpp:\\d+\\]\r\n"},
        {"false", "1", "", "\\[INF\\]\\[.{24}\\] thread 0 line 0 end \\[nxLogScenario.cpp:\\d+\\]\r\n"},
    };
    for (auto const& row : rows)
    {
        files::remove_all(_directory / "log");
        _environment["KVT_LOG_TO_CONSOLE"] = row.console;
        _environment["KVT_LOG_THREAD_INDEX"] = row.index;
        ASSERT_EQ(Run("plain-exit 1 1"), 0);
        EXPECT_TRUE(std::regex_match(Output(), std::regex(row.output))) << Output();
        EXPECT_TRUE(std::regex_match(Log(), std::regex(row.file))) << Log();
    }
}

} // namespace
