// What `nxcore` shows of configuration keys, delimited files, versions and the process.

#include "tests/tools/RunTool.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{
bool Holds(std::string const& text, std::string_view part)
{
    return text.find(part) != std::string::npos;
}

std::size_t CountLines(std::string const& text)
{
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}
} // namespace

TEST(VersionCommand, TellsWhetherAVersionFits)
{
    ToolRun const own = RunTool("version");
    EXPECT_EQ(own.status, 0);
    EXPECT_TRUE(Holds(own.output, "1.37.2032")) << own.output;
    EXPECT_EQ(RunTool("version 1.37.9").status, 0);
    ToolRun const other = RunTool("version 1.38 -json");
    EXPECT_EQ(other.status, 1);
    EXPECT_TRUE(Holds(other.output, "\"compatible\": false")) << other.output;
}

TEST(IdentityCommand, ShowsTheProcess)
{
    ToolRun const run = RunTool("identity", "KVT_DAEMON=SSL:host:1234");
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(Holds(run.output, "application    nxcore\n")) << run.output;
    EXPECT_TRUE(Holds(run.output, "secure daemon  yes\n")) << run.output;
    EXPECT_TRUE(Holds(RunTool("identity -json").output, "\"secureDaemon\": false"));
}

TEST(IdentityCommand, LogsToTheConsoleOnlyWhenAsked)
{
    EXPECT_EQ(RunTool("version").output, "version  1.37.2032\n");
    EXPECT_EQ(RunTool("keys KVT_LOG_TO_CONSOLE -set").output.find("\nKVT_"), std::string::npos);
    EXPECT_TRUE(Holds(RunTool("keys KVT_LOG_TO_CONSOLE -set", "KVT_LOG_TO_CONSOLE=TERSE").output, "TERSE"));
}

TEST(KeysCommand, ListsTheCatalogue)
{
    ToolRun const all = RunTool("keys");
    EXPECT_EQ(all.status, 0);
    EXPECT_EQ(CountLines(all.output), 1u + 352 + 1);
    EXPECT_TRUE(Holds(all.output, "\nKVT_USERNAME ")) << all.output.substr(0, 200);
    EXPECT_LT(all.output.find("\nKVT_USERNAME "),
              all.output.find("\nKVT_PASSWORD ")); // in order of declaration

    ToolRun const some = RunTool("keys consistency -json");
    EXPECT_EQ(some.status, 0);
    EXPECT_TRUE(Holds(some.output, "\"LOCAL_QUORUM\"")) << some.output;
    EXPECT_FALSE(Holds(some.output, "KVT_USERNAME"));
    EXPECT_TRUE(Holds(RunTool("keys KVT_LOG_TIME").output, "double, seconds  0.1"));
    EXPECT_TRUE(Holds(RunTool("keys KVT_NETWORK").output, ";239.192.0.0"));

    ToolRun const none = RunTool("keys KVT_LOG_LEVLE");
    EXPECT_EQ(none.status, 1);
    EXPECT_TRUE(Holds(none.error, "did you mean KVT_LOG_LEVEL?")) << none.error;
}

TEST(KeysCommand, ShowsWhatIsSetButNoPassword)
{
    ToolRun const run =
        RunTool("keys -set", "env -i KVT_PASSWORD=secret KVT_USERNAME=user KVT_EXCHANGE_NAME= KVT_NONE=1");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(CountLines(run.output), 1u + 3 + 1) << run.output;
    EXPECT_TRUE(Holds(run.output, "user")) << run.output;
    EXPECT_TRUE(Holds(run.output, "KVT_EXCHANGE_NAME")) << run.output;
    EXPECT_FALSE(Holds(run.output, "secret")) << run.output;
    EXPECT_FALSE(Holds(RunTool("keys -set -json", "KVT_PASSWORD=secret").output, "secret"));
}

TEST(CsvCommand, ShowsRowsAndWhatWasSkipped)
{
    std::string const file = MakeFile("rows.csv", "a,\"b, c\" ,d\n\n# note\nx,y\x1b[31m,z,w\n");
    ToolRun const run = RunTool("csv -quotes " + file);
    EXPECT_EQ(run.status, 0) << run.error;
    EXPECT_EQ(run.output, "Line  1  2          3  4\n"
                          "   1  a  b, c       d\n"
                          "   4  x  y\\x1B[31m  z  w\n"
                          "rows           2\n"
                          "widest row     4 columns, line 4\n"
                          "empty lines    1: line 2\n"
                          "comment lines  1: line 3\n");
    ToolRun const chosen = RunTool("csv -columns 3,1 -separator tab " + MakeFile("tabs.csv", "a\tb\tc\n"));
    EXPECT_TRUE(Holds(chosen.output, "   1  c  a\n")) << chosen.output;
    EXPECT_TRUE(Holds(RunTool("csv -json " + file).output, "\"rowCount\": 2"));
}

TEST(CsvCommand, SaysWhatIsWrong)
{
    struct
    {
        std::string arguments;
        int status;
        char const* error;
        char const* output; // a part of it
    } const rows[] = {
        {MakeFile("long.csv", "a,b\n" + std::string(8192, 'x') + "\nc\n"), 1,
         ":2: can't be read from this line on", "   1  a  b\n"},
        {MakeFile("longest.csv", std::string(9000, 'x')), 2, ":1: can't be read from this line on", ""},
        {"/tmp", 2, "/tmp: is a directory", ""},
        {"/nowhere/file.csv", 2, "/nowhere/file.csv: can't be opened", ""},
        {"-quotes " + MakeFile("open.csv", "\"a\"\"\",b\nc,\"d,e\n"), 1, ":2: ends inside quotes",
         "   2  c   d,e\n"},
        {"-separator ab x", 2, "-separator: one byte", ""},
        {"-columns 1,x x", 2, "-columns: numbers from 1", ""},
    };
    for (auto const& row : rows)
    {
        ToolRun const run = RunTool("csv " + row.arguments);
        EXPECT_EQ(run.status, row.status) << row.arguments;
        EXPECT_TRUE(Holds(run.error, row.error)) << run.error;
        EXPECT_TRUE(Holds(run.output, row.output)) << run.output;
    }
}
