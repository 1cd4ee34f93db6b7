// What the companion shows: the lines of the transcripts beside this file, whose README says how they are read.

#include "tests/tools/RunTool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <vector>

namespace
{
struct Scene
{
    std::string place; // of its line in the transcript
    std::string command;
    int status = 0;
    std::vector<std::string> parts;
    std::vector<std::string> errors;
    std::vector<std::string> absent;
    std::string whole; // empty when only parts are given
};

std::vector<Scene> ReadScenes(std::string const& name)
{
    std::ifstream file(NX_TRANSCRIPTS_PATH "/" + name + ".txt");
    std::vector<Scene> scenes;
    int number = 0;
    for (std::string line; std::getline(file, line);)
    {
        ++number;
        std::string const text = line.substr(std::min<std::size_t>(2, line.size()));
        switch (line.empty() ? '#' : line.front())
        {
        case '#': break;
        case '$': scenes.push_back({name + ":" + std::to_string(number), text, 0, {}, {}, {}, {}}); break;
        case '=': scenes.back().status = std::stoi(text); break;
        case '>': scenes.back().parts.push_back(text); break;
        case '!': scenes.back().errors.push_back(text); break;
        case '-': scenes.back().absent.push_back(text); break;
        case '|': scenes.back().whole += text + "\n"; break;
        default: ADD_FAILURE() << name << ":" << number << ": " << line;
        }
    }
    return scenes;
}

void ExpectParts(std::string const& text, std::vector<std::string> const& parts)
{
    std::size_t position = 0;
    for (std::string const& part : parts)
    {
        std::size_t const found = text.find(part, position);
        EXPECT_NE(found, std::string::npos) << part << "\nis not in\n" << text.substr(position);
        position = found == std::string::npos ? position : found + part.size();
    }
}
} // namespace

class Transcript : public testing::TestWithParam<char const*>
{
};

TEST_P(Transcript, IsWhatOneSees)
{
    std::vector<Scene> const scenes = ReadScenes(GetParam());
    EXPECT_GT(scenes.size(), 10u);
    for (Scene const& scene : scenes)
    {
        SCOPED_TRACE(scene.place + ": " + scene.command);
        ToolRun const run = RunLine(scene.command);
        EXPECT_EQ(run.status, scene.status) << run.error;
        ExpectParts(run.output, scene.parts);
        ExpectParts(run.error, scene.errors);
        EXPECT_EQ(run.error.empty(), scene.errors.empty()) << run.error;
        for (std::string const& part : scene.absent)
            EXPECT_EQ((run.output + run.error).find(part), std::string::npos) << part;
        if (!scene.whole.empty())
        {
            EXPECT_EQ(run.output + (run.output.ends_with('\n') ? "" : "\n"), scene.whole);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Tool, Transcript,
                         testing::Values("frame", "network", "prices", "process", "vocabulary", "when"));
