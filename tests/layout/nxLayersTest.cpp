// Which headers may include which: read from the sources themselves.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace
{
namespace fs = std::filesystem;

fs::path const root = NX_SOURCE_PATH;

// From below.
std::vector<std::string> const layers = {"platform", "vocabulary", "text",       "concurrency",
                                         "numbers",  "time",       "process",    "logging",
                                         "prices",   "network",    "integration"};

std::size_t LayerOf(std::string const& folder)
{
    return static_cast<std::size_t>(std::ranges::find(layers, folder) - layers.begin());
}

struct Source
{
    std::string name; // from the root, such as core/text/nxDigits.h
    std::vector<std::string> ownIncludes;
    std::vector<std::string> systemIncludes;
    std::string text;
};

std::vector<Source> ReadSources()
{
    static std::regex const include("^\\s*#\\s*include\\s*([<\"])([^>\"]+)[>\"]");
    std::vector<Source> sources;
    for (auto const& entry : fs::recursive_directory_iterator(root / "core"))
    {
        if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp")
            continue;
        Source source{fs::relative(entry.path(), root).string(), {}, {}, {}};
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line); source.text += line + '\n')
        {
            std::smatch match;
            if (std::regex_search(line, match, include))
                (match[1] == "\"" ? source.ownIncludes : source.systemIncludes).push_back(match[2]);
        }
        sources.push_back(std::move(source));
    }
    return sources;
}

std::string FolderOf(std::string const& name)
{
    std::size_t const begin = name.find('/') + 1;
    return name.substr(begin, name.find('/', begin) - begin);
}

bool IsHeader(Source const& source)
{
    return source.name.ends_with(".h");
}
} // namespace

TEST(nxLayers, AreIncludedDownwardOnly)
{
    for (Source const& source : ReadSources())
    {
        EXPECT_TRUE(!IsHeader(source) || source.text.starts_with("#pragma once")) << source.name;
        if (source.name == "core/core.h")
            continue;
        std::size_t const layer = LayerOf(FolderOf(source.name));
        ASSERT_LT(layer, layers.size()) << source.name << " lies in no layer";
        for (std::string const& include : source.ownIncludes)
        {
            bool const isLog = include == "core/logging/nxLogSite.h" && !IsHeader(source);
            EXPECT_TRUE(isLog || LayerOf(FolderOf(include)) <= layer)
                << source.name << " includes " << include;
        }
    }
}

TEST(nxLayers, TheSystemIsReachedThroughThePlatformOnly)
{
    static std::regex const platformMacro("#\\s*if[^\\n]*(__linux__|_WIN32|__unix__|_MSC_VER|__APPLE__)");
    for (Source const& source : ReadSources())
    {
        if (FolderOf(source.name) == "platform")
            continue;
        for (std::string const& include : source.systemIncludes)
            EXPECT_EQ(include.find(".h"), std::string::npos) << source.name << " includes " << include;
        EXPECT_FALSE(std::regex_search(source.text, platformMacro)) << source.name;
    }
}

TEST(nxLayers, TheUmbrellaHasEveryPublicHeader)
{
    std::set<std::string> reached;
    std::vector<std::string> left = {"core/core.h"};
    std::map<std::string, Source> byName;
    for (Source& source : ReadSources())
        byName.emplace(source.name, std::move(source));
    while (!left.empty())
    {
        std::string const name = left.back();
        left.pop_back();
        if (!reached.insert(name).second || !byName.contains(name))
            continue;
        for (std::string const& include : byName.at(name).ownIncludes)
            left.push_back(include);
    }
    for (auto const& [name, source] : byName)
    {
        bool const isPublic = IsHeader(source) && source.text.find("NX_CORE_API") != std::string::npos;
        EXPECT_TRUE(!isPublic || reached.contains(name) || FolderOf(name) == "platform")
            << name << " is not in core/core.h";
    }
}
