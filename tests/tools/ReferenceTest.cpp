// What a ladder's picture shows, and what the page of the vocabulary says of itself without a browser.

#include "tests/tools/RunTool.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdio>
#include <fstream>
#include <iterator>

namespace
{
std::string Content(std::string const& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::size_t Count(std::string const& text, std::string_view part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

/// The picture of a ladder; empty when there is none.
std::string Picture(std::string const& name)
{
    std::string const path = MakeFile(name + ".svg", "an older picture, which is replaced");
    ToolRun const run = RunTool("ladder " + name + " -svg " + path);
    EXPECT_EQ(run.status, 0) << run.error;
    return Content(path);
}
} // namespace

TEST(LadderPicture, LabelsEveryRangeOfALongLadder)
{
    auto const ladder = nlohmann::json::parse(RunTool("ladder CXE_mifid_5 -json").output);
    std::string const svg = Picture("CXE_mifid_5");
    EXPECT_EQ(svg.compare(0, 5, "<svg "), 0);
    EXPECT_EQ(svg.substr(svg.size() - 7), "</svg>\n");
    std::size_t edges = 0;
    for (auto const& range : ladder["ranges"])
    {
        EXPECT_NE(svg.find(">" + range["tick"].get<std::string>() + "</text>"), std::string::npos) << range;
        if (range["to"].is_null())
            continue;
        ++edges;
        EXPECT_NE(svg.find(">" + range["to"].get<std::string>() + "</text>"), std::string::npos) << range;
    }
    EXPECT_EQ(Count(svg, "<circle "), edges);
}

TEST(LadderPicture, IsDrawnWhereALadderHasOneRangeOrFalls)
{
    std::string const flat = Picture("CXE_tck_0025");
    EXPECT_NE(flat.find("one range, the tick is 0.0025"), std::string::npos);
    EXPECT_EQ(Count(flat, "<circle "), 0u);

    std::string const falling = Picture("EURONEXT_23"); // 0.0008 up to 0.4995, then 0.0005
    EXPECT_NE(falling.find(">0.0008</text>"), std::string::npos);
    EXPECT_NE(falling.find(">0.4995</text>"), std::string::npos);
    for (std::string const& svg : {flat, falling})
    {
        EXPECT_EQ(svg.find("nan"), std::string::npos);
        EXPECT_EQ(svg.find("inf"), std::string::npos);
    }
}

TEST(Reference, IsOneFileThatLoadsNothing)
{
    std::string const directory = testing::TempDir() + "nxcore-reference";
    ToolRun const run = RunTool("reference " + directory + " -json");
    ASSERT_EQ(run.status, 0) << run.error;
    auto const document = nlohmann::json::parse(run.output);
    std::string const file = document["file"];
    std::string const page = Content(file);
    EXPECT_EQ(page.size(), document["bytes"].get<std::size_t>());
    EXPECT_LT(page.size(), 2'000'000u);
    EXPECT_EQ(page.find("http:"), std::string::npos);
    EXPECT_EQ(page.find("https:"), std::string::npos);
    EXPECT_EQ(page.find(" src="), std::string::npos);
    EXPECT_EQ(Count(page, "class=\"entry ladder\""), document["ladders"].get<std::size_t>());

    auto const listed = nlohmann::json::parse(RunTool("list -json").output);
    EXPECT_EQ(document["enumerations"], listed["enumerations"].size());
    EXPECT_EQ(document["masks"], listed["bitMasks"].size());
    (void)std::remove(file.c_str());
    (void)std::remove(directory.c_str());
}
