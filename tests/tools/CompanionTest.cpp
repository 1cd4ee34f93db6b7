// What the companion shows: the lines of the transcripts beside this file, whose README says how they are read, and that
// -json gives one document and nothing else, whatever the command and however it ends.

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

struct Outcome
{
    int status = -1; ///< the exit status; -1 when it did not end by itself
    std::string output;
    std::string error;
};

std::string Contents(fs::path const& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

class Companion : public testing::Test
{
protected:
    Companion()
    {
        fs::create_directories(_scratch);
        fs::create_directory_symlink(NX_EXAMPLES_PATH, _scratch / "examples");
    }
    ~Companion() override
    {
        fs::remove_all(_scratch);
    }

    /// Runs a line of the shell in a directory of this test's own that holds `examples`; `nxcore` is the program.
    Outcome RunLine(std::string const& line, std::string const& input = "") const
    {
        std::ofstream(_scratch / ".input") << input;
        // A group of its own line, so that only what the line itself ends with counts.
        std::string const command = "PATH='" NX_TOOL_DIRECTORY "':'" NX_TESTS_PATH "':$PATH; cd '" +
                                    _scratch.string() + "'; {\n" + line + "\n} <.input >.output 2>.error";
        int const status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Contents(_scratch / ".output"),
                Contents(_scratch / ".error")};
    }

    /// The first words of the indented lines of the paragraph with this title in the general help.
    std::vector<std::string> CommandNames() const
    {
        std::istringstream help(
            RunLine("nxcore -help | sed -n '/^Commands:$/,/^$/s/^  \\([^ ]*\\).*/\\1/p'").output);
        return {std::istream_iterator<std::string>(help), {}};
    }

    /// The command and the arguments that its help shows, without what stands around them.
    std::string ExampleOf(std::string const& command) const
    {
        std::string const help = RunLine("nxcore " + command + " -help").output;
        std::size_t const begin = help.find(command, help.rfind("\nExample:"));
        return help.substr(begin, std::min(help.find_first_of(")\n", begin), help.find(" | man")) - begin);
    }

    void ExpectDocument(std::string const& arguments, int least, int most) const
    {
        SCOPED_TRACE(arguments);
        Outcome const run = RunLine("KVT_LOG_LEVEL=0 nxcore " + arguments + " -json");
        EXPECT_GE(run.status, least);
        EXPECT_LE(run.status, most);
        nlohmann::json const document = nlohmann::json::parse(run.output, nullptr, false);
        ASSERT_TRUE(document.is_object() && document.contains("problems")) << run.output;
        EXPECT_EQ(document["problems"].empty(), run.status == 0);
        EXPECT_EQ(run.error.empty(), run.status == 0) << run.error;
        for (auto const& problem : document["problems"])
            EXPECT_FALSE(problem["reason"].get<std::string>().empty());
    }

private:
    fs::path const _scratch = fs::temp_directory_path() / ("nxcore-test-" + std::to_string(getpid()));
};

/// A line of the shell and what must come of it: the lines of a transcript by the signs in front of them.
using Scene = std::map<char, std::vector<std::string>>;

std::vector<Scene> ReadScenes(std::string const& name)
{
    std::ifstream file(NX_TESTS_PATH "/transcripts/" + name + ".txt");
    std::vector<Scene> scenes;
    for (std::string line; std::getline(file, line);)
    {
        if (line.empty() || line.front() == '#')
            continue;
        if (line.front() == '$')
            scenes.emplace_back();
        EXPECT_NE(std::string_view("$<=>!-|").find(line.front()), std::string_view::npos) << line;
        scenes.back()[line.front()].push_back(line.substr(std::min<std::size_t>(2, line.size())));
    }
    return scenes;
}

std::string Join(std::vector<std::string> const& lines)
{
    std::string text;
    for (std::string const& line : lines)
        text += line + "\n";
    return text;
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

class Transcript : public Companion, public testing::WithParamInterface<char const*>
{
};

TEST_P(Transcript, IsWhatOneSees)
{
    std::vector<Scene> scenes = ReadScenes(GetParam());
    EXPECT_GT(scenes.size(), 10u);
    for (Scene& scene : scenes)
    {
        SCOPED_TRACE(scene['$'].front());
        Outcome const run = RunLine(scene['$'].front(), Join(scene['<']));
        std::istringstream ending(scene['='].empty() ? "0" : scene['='].front());
        int status = 0;
        std::string reason;
        std::getline(ending >> status >> std::ws, reason);
        if (!reason.empty())
            scene['!'].insert(scene['!'].begin(), reason);
        EXPECT_EQ(run.status, status) << run.error;
        ExpectParts(run.output, scene['>']);
        ExpectParts(run.error, scene['!']);
        EXPECT_EQ(run.error.empty(), scene['!'].empty()) << run.error;
        for (std::string const& part : scene['-'])
            EXPECT_EQ((run.output + run.error).find(part), std::string::npos) << part;
        if (!scene['|'].empty())
        {
            EXPECT_EQ(run.output + (run.output.ends_with('\n') ? "" : "\n"), Join(scene['|']));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Tool, Transcript,
                         testing::Values("frame", "network", "prices", "process", "vocabulary", "when"));

TEST_F(Companion, AnswersEveryCommandWithOneDocument)
{
    std::vector<std::string> const names = CommandNames();
    EXPECT_EQ(names.size(), 20u);
    for (std::string const& name : names)
    {
        ExpectDocument(name + " -help", 0, 0);
        ExpectDocument(name + " -nothing", 2, 2);
        // Nothing that it knows, or more than it takes.
        ExpectDocument(name + " qq1 qq2 qq3 qq4 qq5 qq6", 1, 2);
        if (name == "listen")
            continue; // ends only when it is interrupted: see the transcript of the network
        int const status = name == "send" ? 2 : 0; // nobody listens
        ExpectDocument(ExampleOf(name) + (name == "log-load" ? " -lines 100" : ""), status, status);
    }
    ExpectDocument("no-such-command", 2, 2);
}
