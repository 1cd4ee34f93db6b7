// What the companion says of a host that is in order, and of one that is not.

#include "tests/tools/RunTool.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <map>

namespace
{
std::map<std::string, std::string> StatesOf(std::string const& output)
{
    std::map<std::string, std::string> states;
    for (auto const& check : nlohmann::json::parse(output).at("checks"))
        states[check.at("check")] = check.at("state");
    return states;
}

std::string DirectoryOf(std::string const& file)
{
    return file.substr(0, file.rfind('/'));
}
} // namespace

TEST(Check, FindsNothingWrongWhereAllIsInOrder)
{
    std::string const directory = DirectoryOf(MakeFile("here", ""));
    ToolRun const run = RunTool("check -json", "TZ=Europe/London KVT_LOG_DIRECTORY=" + directory);
    EXPECT_EQ(run.status, 0) << run.output;
    for (auto const& [check, state] : StatesOf(run.output))
        EXPECT_NE(state, "WRONG") << check;
}

TEST(Check, NamesWhatIsWrongAndNothingElse)
{
    struct Row
    {
        char const* before;     // the program starts
        char const* assignment; // later ones count
        char const* wrong;
    };
    static constexpr Row rows[] = {
        {"", "TZ=Nowhere/Nothing", "zone"},
        {"", "KVT_LOG_DIRECTORY=/proc/nowhere/log", "log directory"},
        {"ulimit -n 40; ", "", "descriptors"},
    };
    for (Row const& row : rows)
    {
        SCOPED_TRACE(row.wrong);
        std::string const directory = DirectoryOf(MakeFile("here", ""));
        ToolRun const run =
            RunTool("check -json", row.before + ("KVT_LOG_DIRECTORY=" + directory) + " " + row.assignment);
        EXPECT_EQ(run.status, 1);
        for (auto const& [check, state] : StatesOf(run.output))
            EXPECT_EQ(state == "WRONG", check == row.wrong) << check;
    }
}
