// The companion program as a whole: any command line, and any file in the place of its products, prices or rates.
//
// Its sources are linked in; their main is called under another name.

#include "fuzz/FuzzFolder.h"
#include "fuzz/FuzzInput.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iostream>
#include <sstream>
#include <sys/mman.h>
#include <vector>

int CompanionMain(int argc, char** argv, char** envp);

namespace
{
constexpr char const* commands[] = {"board", "price",   "ladder",     "convert", "describe",
                                    "list",  "mask",    "keys",       "csv",     "version",
                                    "when",  "address", "completion", "manual",  "identity"};

/// Words that make a command do something.
constexpr char const* words[] = {
    "@",         "-json",   "-help",         "-tick",         "-ladder",
    "-from",     "-to",     "-steps",        "-round",        "-rates",
    "-quotes",   "-format", "-zone",         "VTT_CHIX_EUZ1", "CHIX_EUZ1",
    "101-16",    "decimal", "EUR",           "USD",           "12.50",
    "1000000",   "NX_BUY",  "nxBuySellEnum", "now",           "20240131 09:30:15",
    "10.0.0.1/8"};

/// Standard output and error as texts for as long as it lives.
class Captured
{
public:
    Captured() : _outBefore(std::cout.rdbuf(out.rdbuf())), _errBefore(std::cerr.rdbuf(err.rdbuf()))
    {
    }
    ~Captured()
    {
        std::cout.rdbuf(_outBefore);
        std::cerr.rdbuf(_errBefore);
    }

    std::ostringstream out;
    std::ostringstream err;

private:
    std::streambuf* _outBefore;
    std::streambuf* _errBefore;
};

/// A line that would wait for a terminal or the network, or write files in places of its choice.
bool IsOutOfBounds(std::vector<std::string> const& line)
{
    return std::any_of(line.begin() + 1, line.end(),
                       [](std::string const& word) {
                           return word.starts_with("-log") || word.starts_with('/') ||
                                  word.starts_with("..") || word == "-";
                       });
}

std::vector<std::string> TakeLine(FuzzInput& input, std::string const& path)
{
    std::vector<std::string> line{"nxcore", commands[input.Below(std::size(commands))]};
    for (unsigned int count = input.Below(7); count != 0; --count)
    {
        unsigned int const kind = input.Below(40);
        line.push_back(kind < std::size(words) ? words[kind] : input.Text().c_str());
        if (line.back() == "@")
            line.back() = path;
    }
    return line;
}

void CheckRun(std::vector<std::string>& line)
{
    std::vector<char*> argv;
    for (std::string& word : line)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    char* envp[] = {nullptr};
    Captured captured;
    int const status = CompanionMain(static_cast<int>(line.size()), argv.data(), envp);
    FUZZ_CHECK(status >= 0 && status <= 3);
    bool const isJson = std::find(line.begin(), line.end(), "-json") != line.end() &&
                        std::find(line.begin(), line.end(), "-help") == line.end();
    std::string const out = captured.out.str();
    if (isJson && status != 2)
        FUZZ_CHECK(nlohmann::json::accept(out));
    if (status != 0)
        FUZZ_CHECK(!captured.err.str().empty() || !out.empty());
}
} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    FuzzQuietLog();
    std::filesystem::current_path(FuzzFolder());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    int const file = memfd_create("products", MFD_CLOEXEC);
    std::string const path = "./file";
    std::filesystem::remove(path);
    std::filesystem::create_symlink("/proc/self/fd/" + std::to_string(file), path);
    std::vector<std::string> line = TakeLine(input, path);
    std::string content =
        input.Truth() ? "symbol,exchange,description,type,currency,price_format,tick,tick_table,last,volume\n"
                      : "";
    content += input.Rest();
    FUZZ_EQUAL(write(file, content.data(), content.size()), static_cast<ssize_t>(content.size()));
    if (!IsOutOfBounds(line))
        CheckRun(line);
    close(file);
    return 0;
}
