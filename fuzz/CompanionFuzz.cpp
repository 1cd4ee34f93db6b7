// The companion program as a whole: any command line, and any file as its products, prices or rates.
//
// Its sources are linked in, all but its main.

#include "fuzz/FuzzInput.h"
#include "tools/nxcore/Program.h"

#include "core/process/nxCmdLineArgs.h"

#include <nlohmann/json.hpp>

#include <iostream>
#include <sstream>

namespace
{
/// A fresh one for each run: the process's own reads its command line only once.
class CommandLine : public nxCmdLineArgs
{
};

constexpr char const* commands[] = {"board", "price",   "ladder",     "convert", "describe",
                                    "list",  "mask",    "keys",       "csv",     "version",
                                    "when",  "address", "completion", "manual",  "identity"};

/// Words that make a command do something; the first is the file.
constexpr char const* words[] = {
    "./file",    "-json",   "-help",         "-tick",         "-ladder",
    "-from",     "-to",     "-steps",        "-round",        "-rates",
    "-quotes",   "-format", "-zone",         "VTT_CHIX_EUZ1", "CHIX_EUZ1",
    "101-16",    "decimal", "EUR",           "USD",           "12.50",
    "1000000",   "NX_BUY",  "nxBuySellEnum", "now",           "20240131 09:30:15",
    "10.0.0.1/8"};

/// One that would wait for a terminal or the network, or write files in places of its choice.
bool IsOutOfBounds(std::string const& word)
{
    return word.starts_with("-log") || word.starts_with('/') || word.starts_with("..") || word == "-";
}

std::vector<std::string> TakeLine(FuzzInput& input)
{
    std::vector<std::string> line{"nxcore", commands[input.Below(std::size(commands))]};
    for (unsigned int count = input.Below(7); count != 0; --count)
    {
        unsigned int const kind = input.Below(40);
        line.push_back(kind < std::size(words) ? words[kind] : input.Text().c_str());
    }
    return line;
}

void CheckRun(std::vector<std::string>& line)
{
    std::vector<std::string> environment{"KVT_LOG_TO_CONSOLE=NO"};
    std::ostringstream out;
    std::ostringstream err;
    std::streambuf* const outBefore = std::cout.rdbuf(out.rdbuf());
    std::streambuf* const errBefore = std::cerr.rdbuf(err.rdbuf());
    CommandLine commandLine;
    int const status = nxTool::RunProgram(commandLine, static_cast<int>(line.size()),
                                          FuzzPointers(line).data(), FuzzPointers(environment).data());
    std::cout.rdbuf(outBefore);
    std::cerr.rdbuf(errBefore);
    bool const isJson = std::count(line.begin(), line.end(), "-json") != 0;
    FUZZ_CHECK(status >= 0 && status <= 2);
    FUZZ_CHECK(!isJson || nlohmann::json::accept(out.str()));
    FUZZ_CHECK(status == 0 || !err.str().empty() || !out.str().empty());
}
} // namespace

void FuzzStart()
{
    std::filesystem::current_path(FuzzFolder());
}

void FuzzOne(FuzzInput& input)
{
    std::vector<std::string> line = TakeLine(input);
    constexpr char const header[] =
        "symbol,exchange,description,type,currency,price_format,tick,tick_table,last,volume\n";
    std::string const file = FuzzFile((input.Truth() ? header : "") + input.Rest());
    static int const link = symlink(file.c_str(), words[0]);
    FUZZ_EQUAL(link, 0);
    if (std::none_of(line.begin() + 1, line.end(), IsOutOfBounds))
        CheckRun(line);
}
