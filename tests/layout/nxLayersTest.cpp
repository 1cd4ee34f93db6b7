// Which headers may include which: read from the sources themselves.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace
{
namespace fs = std::filesystem;

// From below.
constexpr std::array layers = {"platform", "vocabulary", "text",   "concurrency", "numbers",    "time",
                               "process",  "logging",    "prices", "network",     "integration"};

std::string FolderOf(std::string const& name)
{
    return std::regex_replace(name, std::regex("core/(\\w+)/.*"), "$1");
}

std::size_t LayerOf(std::string const& name)
{
    return static_cast<std::size_t>(std::ranges::find(layers, FolderOf(name)) - layers.begin());
}

/// Texts by their names from the root.
using Sources = std::map<std::string, std::string>;

Sources ReadSources()
{
    Sources sources;
    for (auto const& entry : fs::recursive_directory_iterator(NX_SOURCE_PATH "/core"))
    {
        std::ifstream file(entry.path());
        if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp")
            sources[fs::relative(entry.path(), NX_SOURCE_PATH)] = {std::istreambuf_iterator<char>(file), {}};
    }
    return sources;
}

/// What a text includes between these signs.
std::vector<std::string> IncludesOf(std::string const& text, std::string const& signs)
{
    std::regex const include("(?:^|\n)\\s*#\\s*include\\s*[" + signs + "]([^\">]+)[\">]");
    return {std::sregex_token_iterator(text.begin(), text.end(), include, 1), {}};
}
} // namespace

TEST(nxLayers, AreIncludedDownwardOnly)
{
    for (auto const& [name, text] : ReadSources())
    {
        bool const isHeader = name.ends_with(".h");
        EXPECT_TRUE(!isHeader || text.starts_with("#pragma once")) << name;
        if (name == "core/core.h")
            continue;
        ASSERT_LT(LayerOf(name), layers.size()) << name << " lies in no layer";
        for (std::string const& include : IncludesOf(text, "\""))
        {
            bool const isLog = include == "core/logging/nxLogSite.h" && !isHeader;
            EXPECT_TRUE(isLog || LayerOf(include) <= LayerOf(name)) << name << " includes " << include;
        }
    }
}

TEST(nxLayers, TheSystemIsReachedThroughThePlatformOnly)
{
    std::regex const platformMacro("#\\s*if[^\\n]*(__linux__|_WIN32|__unix__|_MSC_VER|__APPLE__)");
    for (auto const& [name, text] : ReadSources())
    {
        if (FolderOf(name) == "platform")
            continue;
        for (std::string const& include : IncludesOf(text, "<"))
            EXPECT_EQ(include.find(".h"), std::string::npos) << name << " includes " << include;
        EXPECT_FALSE(std::regex_search(text, platformMacro)) << name;
    }
}

TEST(nxLayers, TheUmbrellaHasEveryPublicHeader)
{
    Sources const sources = ReadSources();
    std::set<std::string> reached;
    std::vector<std::string> left = {"core/core.h"};
    while (!left.empty())
    {
        auto const source = sources.find(left.back());
        left.pop_back();
        if (source == sources.end() || !reached.insert(source->first).second)
            continue;
        std::ranges::copy(IncludesOf(source->second, "\""), std::back_inserter(left));
    }
    for (auto const& [name, text] : sources)
    {
        bool const isPublic = name.ends_with(".h") && text.find("NX_CORE_API") != std::string::npos;
        EXPECT_TRUE(!isPublic || reached.contains(name) || FolderOf(name) == "platform")
            << name << " is not in core/core.h";
    }
}
