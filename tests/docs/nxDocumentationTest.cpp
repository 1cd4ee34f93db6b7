// What the documentation shows is what happens: its code stands in files that are compiled, its commands print what
// stands below them, and its links and paths lead somewhere.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

fs::path const root = NX_SOURCE_PATH;
constexpr int nothingToShow = 77; // the status of a program that can't run on this host

std::vector<std::string> LinesOf(std::string const& text)
{
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin < text.size();)
    {
        std::size_t const end = std::min(text.find('\n', begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

std::string Read(fs::path const& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string Trimmed(std::string const& line)
{
    std::size_t const begin = line.find_first_not_of(' ');
    return begin == std::string::npos ? "" : line.substr(begin, line.find_last_not_of(" \r") - begin + 1);
}

std::vector<std::string> TrimmedLinesOf(std::string const& text)
{
    std::vector<std::string> lines = LinesOf(text);
    std::ranges::transform(lines, lines.begin(), Trimmed);
    return lines;
}

/// What stands between ``` and ``` in a document.
struct Block
{
    std::string language;
    std::string mark; ///< what <!-- --> above it says
    std::size_t line;
    std::vector<std::string> lines;
};

std::vector<Block> BlocksOf(std::string const& document)
{
    static std::regex const comment("<!-- (.*) -->");
    std::vector<Block> blocks;
    std::string mark;
    bool isInside = false;
    std::size_t number = 0;
    for (std::string const& line : LinesOf(document))
    {
        ++number;
        std::smatch match;
        if (line.starts_with("```"))
        {
            isInside = !isInside;
            if (isInside)
                blocks.push_back({line.substr(3), mark, number, {}});
            mark.clear();
        }
        else if (isInside)
            blocks.back().lines.push_back(line);
        else if (std::regex_match(line, match, comment))
            mark = match[1];
        else if (!line.empty())
            mark.clear();
    }
    return blocks;
}

/// The document without its blocks.
std::string ProseOf(std::string const& document)
{
    std::string prose;
    bool isInside = false;
    for (std::string const& line : LinesOf(document))
    {
        if (line.starts_with("```"))
            isInside = !isInside;
        else if (!isInside)
            prose += line + '\n';
    }
    return prose;
}

struct Run
{
    std::string output;
    int status = -1;
};

/// Runs a command of a document, as its reader does from the top of the sources: with the programs of this build, and
/// with neither the reader's configuration nor his console.
Run RunCommand(std::string command)
{
    static std::regex const tool("(^| )\\./run( |$)");
    static std::regex const build("build/release/");
    if (command == "./run")
        command = "./run board examples/products.csv";
    command = std::regex_replace(command, build, NX_BUILD_PATH "/");
    command = std::regex_replace(command, tool, "$1" NX_TOOL_PATH "$2");
    static std::string const scratch =
        (fs::temp_directory_path() / ("nxcore-docs-" + std::to_string(getpid()))).string();
    fs::create_directories(scratch);
    std::string const shell = "cd '" + root.string() + "' && export TMPDIR='" + scratch +
                              "' COLUMNS=80 && { " + command + "; } 2>&1 < /dev/null";
    Run run;
    std::FILE* const pipe = popen(shell.c_str(), "r");
    if (pipe == nullptr)
        return run;
    char buffer[4096];
    for (std::size_t count; (count = fread(buffer, 1, sizeof buffer, pipe)) > 0;)
        run.output.append(buffer, count);
    int const status = pclose(pipe);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    std::error_code ignored;
    fs::remove_all(scratch, ignored);
    return run;
}

/// Whether a line is as shown, where each "…" stands for any text.
bool IsAsShown(std::string const& line, std::string const& shown)
{
    static std::regex const special("[.*+?^${}()|\\[\\]\\\\]");
    static std::regex const gap("…");
    std::string const pattern = std::regex_replace(std::regex_replace(shown, special, "\\$&"), gap, ".*");
    return std::regex_match(line, std::regex(pattern));
}

/// Compares what a command printed with what is shown, where a line "…" stands for any number of lines.
void ExpectAsShown(std::vector<std::string> const& printed, std::vector<std::string> const& shown)
{
    std::size_t next = 0;
    for (std::size_t index = 0; index < shown.size(); ++index)
    {
        if (shown[index] == "…")
        {
            bool const isLast = index + 1 == shown.size();
            while (next < printed.size() && (isLast || !IsAsShown(printed[next], shown[index + 1])))
                ++next;
            continue;
        }
        ASSERT_LT(next, printed.size()) << "not printed: " << shown[index];
        ASSERT_TRUE(IsAsShown(printed[next], shown[index]))
            << "printed: " << printed[next] << "\nshown:   " << shown[index];
        ++next;
    }
    ASSERT_EQ(next, printed.size()) << "not shown: " << printed[next];
}

std::string WithoutBlanksAtEnd(std::string line)
{
    line.erase(line.find_last_not_of(" \r") + 1);
    return line;
}

/// Runs the commands of a block, each in a line that begins with "$ ".
void CheckConsole(Block const& block)
{
    for (std::size_t index = 0; index < block.lines.size();)
    {
        std::string command = block.lines[index++];
        ASSERT_TRUE(command.starts_with("$ ")) << command;
        command.erase(0, 2);
        std::vector<std::string> shown;
        while (index < block.lines.size() && !block.lines[index].starts_with("$ "))
            shown.push_back(WithoutBlanksAtEnd(block.lines[index++]));
        SCOPED_TRACE(command);
        Run const run = RunCommand(command);
        if (run.status == nothingToShow)
            continue;
        std::vector<std::string> printed = LinesOf(run.output);
        std::ranges::transform(printed, printed.begin(), WithoutBlanksAtEnd);
        ExpectAsShown(printed, shown);
    }
}

/// The lines of a block stand in the file that its mark names, one after the other. How far they are indented doesn't
/// count, and a line "// ..." stands for lines that are left out.
void CheckCode(Block const& block)
{
    ASSERT_FALSE(block.mark.empty())
        << "above the block, <!-- PATH --> has to say in which file its code stands";
    ASSERT_TRUE(fs::exists(root / block.mark)) << block.mark;
    std::vector<std::string> const file = TrimmedLinesOf(Read(root / block.mark));
    auto from = file.begin();
    std::vector<std::string> piece;
    auto const find = [&]
    {
        auto const found = std::search(from, file.end(), piece.begin(), piece.end());
        EXPECT_NE(found, file.end()) << "not in " << block.mark << ": " << piece.front();
        from = found;
        piece.clear();
    };
    for (std::string const& line : block.lines)
    {
        if (Trimmed(line) != "// ...")
            piece.push_back(Trimmed(line));
        else if (!piece.empty())
            find();
    }
    if (!piece.empty())
        find();
}

/// The anchor of a heading: small letters, blanks as dashes, neither signs nor dots.
std::string AnchorOf(std::string const& heading)
{
    std::string anchor;
    for (char const character : heading)
    {
        if (character == ' ' || character == '-')
            anchor += '-';
        else if (std::isalnum(static_cast<unsigned char>(character)) || character == '_')
            anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    }
    return anchor;
}

std::set<std::string> AnchorsOf(fs::path const& document)
{
    std::set<std::string> anchors;
    for (std::string const& line : LinesOf(ProseOf(Read(document))))
        if (line.starts_with("#"))
            anchors.insert(AnchorOf(Trimmed(line.substr(line.find_first_not_of('#')))));
    return anchors;
}

std::vector<std::string> Documents()
{
    std::vector<std::string> documents;
    for (auto const& entry : fs::directory_iterator(root))
        if (entry.path().extension() == ".md")
            documents.push_back(entry.path().filename().string());
    for (auto const& entry : fs::directory_iterator(root / "docs"))
        if (entry.path().extension() == ".md")
            documents.push_back("docs/" + entry.path().filename().string());
    std::ranges::sort(documents);
    return documents;
}

std::string NameOf(testing::TestParamInfo<std::string> const& info)
{
    return std::regex_replace(fs::path(info.param).stem().string(), std::regex("[^A-Za-z0-9]"), "_");
}
} // namespace

class nxDocumentation : public testing::TestWithParam<std::string>
{
protected:
    std::string const _text = Read(root / GetParam());
};

TEST_P(nxDocumentation, ShowsCodeThatIsCompiled)
{
    for (Block const& block : BlocksOf(_text))
    {
        SCOPED_TRACE(GetParam() + ":" + std::to_string(block.line));
        if (block.language == "cpp")
            CheckCode(block);
    }
}

TEST_P(nxDocumentation, ShowsWhatCommandsPrint)
{
    for (Block const& block : BlocksOf(_text))
    {
        SCOPED_TRACE(GetParam() + ":" + std::to_string(block.line));
        if (block.language == "console")
            CheckConsole(block);
    }
}

TEST_P(nxDocumentation, LeadsSomewhere)
{
    static std::regex const link("\\]\\(([^)#]*)(#[^)]*)?\\)");
    static std::regex const path(
        "`((core|tests|tools|examples|docs|cmake|scripts|bench|fuzz)/[A-Za-z0-9_./-]+)`");
    std::string const prose = ProseOf(_text);
    fs::path const document = root / GetParam();
    for (std::sregex_iterator match(prose.begin(), prose.end(), link), end; match != end; ++match)
    {
        std::string const target = (*match)[1];
        if (target.starts_with("http"))
            continue;
        fs::path const file = target.empty() ? document : document.parent_path() / target;
        EXPECT_TRUE(fs::exists(file)) << GetParam() << ": " << target;
        std::string const anchor = (*match)[2];
        bool const isFound =
            anchor.empty() || file.extension() != ".md" || AnchorsOf(file).contains(anchor.substr(1));
        EXPECT_TRUE(isFound) << GetParam() << ": " << target << anchor;
    }
    for (std::sregex_iterator match(prose.begin(), prose.end(), path), end; match != end; ++match)
        EXPECT_TRUE(fs::exists(root / (*match)[1].str())) << GetParam() << ": " << (*match)[1];
}

INSTANTIATE_TEST_SUITE_P(Of, nxDocumentation, testing::ValuesIn(Documents()), NameOf);
