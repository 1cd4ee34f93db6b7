// The companion's own log, and its load on the log.

#include "tests/tools/RunTool.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace
{
namespace files = std::filesystem;

/// A directory for logs.
class OwnLog : public testing::Test
{
protected:
    OwnLog()
    {
        std::string pattern = (files::temp_directory_path() / "nxtoollogXXXXXX").string();
        _directory = mkdtemp(pattern.data());
    }

    ~OwnLog() override
    {
        std::error_code error;
        files::remove_all(_directory, error);
    }

    /// All that the log files hold.
    std::string Log() const
    {
        std::string text;
        for (auto const& entry : files::recursive_directory_iterator(_directory))
        {
            if (!entry.is_regular_file())
                continue;
            std::ifstream stream(entry.path(), std::ios::binary);
            text.append(std::istreambuf_iterator<char>(stream), {});
        }
        return text;
    }

    std::string _directory;
};
} // namespace

TEST_F(OwnLog, StandsInAFileAndNotAmongTheAnswer)
{
    ToolRun const plain = RunTool("version 1.38");
    ToolRun const logged = RunTool("version 1.38 -log " + _directory);
    EXPECT_EQ(logged.output, plain.output);
    EXPECT_EQ(logged.error, plain.error);
    EXPECT_EQ(logged.status, plain.status);
    EXPECT_NE(Log().find("] Command started: version 1.38 -log " + _directory + " ["), std::string::npos)
        << Log();
    EXPECT_NE(Log().find("] Command ended, exit status: 1 ["), std::string::npos) << Log();
}

TEST_F(OwnLog, ShowsControlCharactersAsNumbersAndProblemsAtDebug)
{
    (void)RunTool("list -search 'a\nb' -log " + _directory, "KVT_LOG_LEVEL=0");
    EXPECT_NE(Log().find("list -search a\\x0Ab -log"), std::string::npos) << Log();
    EXPECT_NE(Log().find("[DBG]"), std::string::npos) << Log();
}

TEST_F(OwnLog, NeedsADirectory)
{
    ToolRun const run = RunTool("version -log " + _directory + "/no/parent");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.output, "");
    EXPECT_NE(run.error.find("-log: no directory"), std::string::npos) << run.error;
}

TEST(LogLoadCommand, FindsEachLineOnceInTheFile)
{
    for (char const* const environment : {"KVT_LOG_FORCE_FLUSH=NO", "KVT_LOG_FORCE_FLUSH=TRUE"})
    {
        ToolRun const run = RunTool("log-load -threads 3 -lines 2000 -length 60 -json", environment);
        ASSERT_EQ(run.status, 0) << run.error;
        auto const answer = nlohmann::json::parse(run.output);
        EXPECT_EQ(answer["lines"], 6000);
        EXPECT_EQ(answer["linesFound"], 6000);
        EXPECT_EQ(answer["complete"], true);
        EXPECT_GT(answer["bytes"], 6000 * 60);
        EXPECT_GE(answer["p999Nanoseconds"], answer["p50Nanoseconds"]);
    }
}

TEST(LogLoadCommand, RefusesALoadThatWouldShowNothing)
{
    EXPECT_EQ(RunTool("log-load -threads 0").status, 2);
    EXPECT_EQ(RunTool("log-load -length 20").status, 2);
    EXPECT_EQ(RunTool("log-load -lines many").status, 2);
    EXPECT_EQ(RunTool("log-load", "KVT_LOG_LEVEL=7").status, 2); // would wait for its lines for ever
}
