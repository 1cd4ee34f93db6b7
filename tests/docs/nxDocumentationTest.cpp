// What the documentation shows is what happens: its code stands in files that are compiled, its commands print what
// stands below them, and its links and paths lead somewhere.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <utility>
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
    return std::regex_replace(line, std::regex("^ +|[ \r]+$"), "");
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

struct Document
{
    explicit Document(std::string const& text)
    {
        static std::regex const comment("<!-- (.*) -->");
        std::string mark;
        bool isInside = false;
        std::size_t number = 0;
        for (std::string const& line : LinesOf(text))
        {
            ++number;
            std::smatch match;
            if (line.starts_with("```"))
            {
                isInside = !isInside;
                if (isInside)
                    blocks.push_back({line.substr(3), std::exchange(mark, ""), number, {}});
            }
            else if (isInside)
                blocks.back().lines.push_back(line);
            else
                prose += line + '\n';
            if (!isInside && std::regex_match(line, match, comment))
                mark = match[1];
        }
    }

    std::vector<Block> blocks;
    std::string prose; ///< what is left
};

/// Runs a command of a document, as its reader does from the top of the sources: with the programs of this build, and
/// with neither the reader's configuration nor his console. @return its status and its lines, without blanks at the end.
std::pair<int, std::vector<std::string>> Run(std::string command)
{
    if (command == "./run")
        command = "./run board examples/products.csv";
    command = std::regex_replace(command, std::regex("build/release/"), NX_BUILD_PATH "/");
    command = std::regex_replace(command, std::regex("(^| )\\./run( |$)"), "$1" NX_TOOL_PATH "$2");
    fs::path const scratch = fs::temp_directory_path() / ("nxcore-docs-" + std::to_string(getpid()));
    fs::create_directories(scratch);
    std::string const shell = "cd '" + root.string() + "' && export TMPDIR='" + scratch.string() +
                              "' COLUMNS=80 && { " + command + "; } > $TMPDIR/output 2>&1 < /dev/null";
    int const status = std::system(shell.c_str());
    std::string const output = Read(scratch / "output");
    fs::remove_all(scratch);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1,
            LinesOf(std::regex_replace(output, std::regex("[ \r]+\n"), "\n"))};
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

/// Runs the commands of a block, each in a line that begins with "$ ".
void CheckConsole(Block const& block)
{
    for (std::size_t index = 0; index < block.lines.size();)
    {
        std::string const command = block.lines[index++];
        ASSERT_TRUE(command.starts_with("$ ")) << command;
        std::vector<std::string> shown;
        while (index < block.lines.size() && !block.lines[index].starts_with("$ "))
            shown.push_back(block.lines[index++]);
        SCOPED_TRACE(command);
        auto const [status, printed] = Run(command.substr(2));
        if (status != nothingToShow)
            ExpectAsShown(printed, shown);
    }
}

bool IsGap(std::string const& line)
{
    return Trimmed(line) == "// ...";
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
    for (auto begin = block.lines.begin(), end = begin; begin != block.lines.end(); begin = end)
    {
        end = std::find_if(begin, block.lines.end(), IsGap);
        std::vector<std::string> piece(begin, end);
        std::ranges::transform(piece, piece.begin(), Trimmed);
        from = std::search(from, file.end(), piece.begin(), piece.end());
        EXPECT_NE(from, file.end()) << "not in " << block.mark << ": " << *begin;
        end += end == block.lines.end() ? 0 : 1;
    }
}

/// Where a link into a document may lead: its headings in small letters, blanks as dashes, neither signs nor dots.
std::set<std::string> AnchorsOf(fs::path const& document)
{
    std::set<std::string> anchors;
    for (std::string const& line : LinesOf(Document(Read(document)).prose))
    {
        std::string anchor = std::regex_replace(line, std::regex("^#+ |[^A-Za-z0-9_ -]"), "");
        for (char& character : anchor)
            character = character == ' ' ? '-' : static_cast<char>(std::tolower(character));
        if (line.starts_with("#"))
            anchors.insert(anchor);
    }
    return anchors;
}

std::vector<std::string> Documents()
{
    std::vector<std::string> documents;
    for (char const* const folder : {"", "docs/"})
        for (auto const& entry : fs::directory_iterator(root / folder))
            if (entry.path().extension() == ".md")
                documents.push_back(folder + entry.path().filename().string());
    std::ranges::sort(documents);
    return documents;
}

/// All that tests are called, as CTest lists them: suite, dot, case.
std::string NamesOfTests()
{
    std::string names;
    for (auto const& entry : fs::recursive_directory_iterator(root / "tests"))
    {
        if (entry.path().extension() != ".cpp")
            continue;
        std::string const text = Read(entry.path());
        static std::regex const test("\nTEST(_F|_P)?\\((\\w+),\\s*(\\w+)\\)");
        for (std::sregex_iterator match(text.begin(), text.end(), test), end; match != end; ++match)
            names += " " + (*match)[2].str() + "." + (*match)[3].str() + " ";
    }
    return names;
}

std::string NameOf(testing::TestParamInfo<std::string> const& info)
{
    return std::regex_replace(fs::path(info.param).stem().string(), std::regex("[^A-Za-z0-9]"), "_");
}
} // namespace

class nxDocumentation : public testing::TestWithParam<std::string>
{
protected:
    /// Calls `found` with each place of the prose that fits, and what its two groups hold.
    void ForEach(char const* pattern, std::function<void(std::string, std::string)> const& found) const
    {
        std::regex const expression(pattern);
        std::string const& prose = _document.prose;
        for (std::sregex_iterator match(prose.begin(), prose.end(), expression), end; match != end; ++match)
            found((*match)[1], (*match)[2]);
    }

    Document const _document{Read(root / GetParam())};
};

TEST_P(nxDocumentation, ShowsCodeThatIsCompiledAndWhatCommandsPrint)
{
    for (Block const& block : _document.blocks)
    {
        SCOPED_TRACE(GetParam() + ":" + std::to_string(block.line));
        if (block.language == "cpp")
            CheckCode(block);
        if (block.language == "console")
            CheckConsole(block);
    }
}

TEST_P(nxDocumentation, LeadsSomewhere)
{
    fs::path const path = root / GetParam();
    ForEach("\\]\\((?!http)([^)#]*)(#[^)]*)?\\)",
            [&](std::string const& target, std::string const& anchor)
            {
                fs::path const file = target.empty() ? path : path.parent_path() / target;
                EXPECT_TRUE(fs::exists(file)) << target;
                EXPECT_TRUE(anchor.empty() || AnchorsOf(file).contains(anchor.substr(1))) << target << anchor;
            });
    ForEach("`((core|tests|tools|examples|docs|cmake|scripts|bench|fuzz)/[A-Za-z0-9_./-]+)`",
            [](std::string const& file, std::string const&)
            { EXPECT_TRUE(fs::exists(root / file)) << file; });
    static std::string const tests = NamesOfTests();
    ForEach("`(nx\\w+\\.[A-Z]\\w+)(\\(\\))?`", [](std::string const& test, std::string const& call)
            { EXPECT_TRUE(!call.empty() || tests.find(" " + test + " ") != std::string::npos) << test; });
}

INSTANTIATE_TEST_SUITE_P(Of, nxDocumentation, testing::ValuesIn(Documents()), NameOf);
