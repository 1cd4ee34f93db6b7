// -json gives one document and nothing else, whatever the command and however it ends.

#include "tests/tools/RunTool.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <sstream>

namespace
{
using Json = nlohmann::json;

/// The words that begin the lines of a paragraph of the general help.
std::vector<std::string> CommandNames()
{
    std::istringstream help(RunTool("-help").output);
    std::vector<std::string> names;
    std::string line;
    while (line != "Commands:" && std::getline(help, line))
        ;
    while (std::getline(help, line) && !line.empty())
        names.push_back(line.substr(2, line.find(' ', 2) - 2));
    return names;
}

/// The arguments that the help of a command shows, without what stands around them.
std::string ExampleOf(std::string const& command)
{
    std::string const help = RunTool(command + " -help").output;
    std::size_t const begin = help.find(command, help.rfind("\nExample:"));
    return help.substr(begin, std::min(help.find_first_of(")\n", begin), help.find(" | man")) - begin);
}

void ExpectDocument(std::string const& arguments, int least, int most)
{
    SCOPED_TRACE(arguments);
    ToolRun const run = RunTool(arguments, "KVT_LOG_LEVEL=0");
    EXPECT_GE(run.status, least);
    EXPECT_LE(run.status, most);
    Json const document = Json::parse(run.output, nullptr, false);
    ASSERT_TRUE(document.is_object()) << run.output;
    ASSERT_TRUE(document.contains("problems"));
    EXPECT_EQ(document["problems"].empty(), run.status == 0);
    EXPECT_EQ(run.error.empty(), run.status == 0) << run.error;
    for (Json const& problem : document["problems"])
        EXPECT_FALSE(problem["reason"].get<std::string>().empty());
}
} // namespace

TEST(Json, IsOneDocumentOfEveryCommand)
{
    std::vector<std::string> const names = CommandNames();
    EXPECT_EQ(names.size(), 20u);
    for (std::string const& name : names)
    {
        ExpectDocument(name + " -help -json", 0, 0);
        ExpectDocument(name + " -nothing -json", 2, 2);
        // Nothing that it knows, or more than it takes.
        ExpectDocument(name + " qq1 qq2 qq3 qq4 qq5 qq6 -json", 1, 2);
        std::string example = ExampleOf(name);
        if (name == "listen")
            continue; // ends only when it is interrupted: see the tests of its own
        if (name == "log-load")
            example += " -lines 100";
        int const status = name == "send" ? 2 : 0; // nobody listens
        ExpectDocument(example + " -json", status, status);
    }
    ExpectDocument("no-such-command -json", 2, 2);
}

TEST(Json, CountsAllRowsOfTheVocabulary)
{
    Json const all = Json::parse(RunTool("list -json").output);
    std::size_t rows = 0;
    for (Json const& enumeration : all["enumerations"])
        rows += enumeration["rows"].get<std::size_t>();
    EXPECT_EQ(rows, 1993u);
    EXPECT_EQ(all["bitMasks"].size(), 33u);
}

TEST(Json, FindsEachLineOfALoadOnceInTheLog)
{
    for (char const* const environment : {"KVT_LOG_FORCE_FLUSH=NO", "KVT_LOG_FORCE_FLUSH=TRUE"})
    {
        ToolRun const run = RunTool("log-load -threads 3 -lines 2000 -length 60 -json", environment);
        ASSERT_EQ(run.status, 0) << run.error;
        Json const answer = Json::parse(run.output);
        EXPECT_EQ(answer["lines"], 6000);
        EXPECT_EQ(answer["linesFound"], 6000);
        EXPECT_EQ(answer["complete"], true);
        EXPECT_GT(answer["bytes"], 6000 * 60);
        EXPECT_GE(answer["p999Nanoseconds"], answer["p50Nanoseconds"]);
    }
}
