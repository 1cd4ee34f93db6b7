// Runs a fuzz target over inputs, without a fuzzer: the corpora are tests, and each past finding stays one.
//
//     fuzz_TARGET FOLDER|FILE|TABLE.txt ...
//     fuzz_seeds TABLE.txt FOLDER               writes a table's inputs as files, the fuzzer's first
//
// A line of a table is a name and what the input is made of: "text" with the byte that ends a text, 'bytes'
// without, and numbers, of one byte or as 7:2, 7:4, 7:8 and 0.5:d of more. Quotes know \n, \r, \t, \0 and
// \xNN; "x"*3 is "xxx". A line that begins with `each` holds what all inputs below it begin with or, with ... in
// their place, what stands around them; after | comes another of that kind, so that each line below is one input
// more, "name-2". A line with # says something.

#include "fuzz/FuzzInput.h"

#include <csignal>
#include <fstream>
#include <iostream>
#include <regex>

extern "C" [[gnu::weak]] int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);
extern "C" [[gnu::weak]] int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace
{
using Inputs = std::map<std::string, std::string>;

std::string current;

void NameTheInput(int signal)
{
    (void)!write(STDERR_FILENO, current.data(), current.size());
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

std::string MakeBytes(std::string const& quoted)
{
    std::string bytes;
    for (std::size_t i = 0; i < quoted.size(); ++i)
    {
        bool const isEscaped = quoted[i] == '\\';
        std::size_t const letter =
            isEscaped ? std::string_view("nrt0x").find(quoted[++i]) : std::string::npos;
        bytes += letter > 4 ? quoted[i] : "\n\r\t\0"[letter];
        if (letter == 4)
            bytes.back() = static_cast<char>(std::stoi(quoted.substr(i + 1, 2), nullptr, 16)), i += 2;
    }
    return bytes;
}

std::string MakeNumber(std::string const& text, std::string const& width)
{
    auto const whole = std::uint64_t{std::strtoull(text.c_str(), nullptr, 0)};
    double const real = std::strtod(text.c_str(), nullptr);
    char bytes[sizeof whole];
    std::memcpy(bytes, width == "d" ? static_cast<void const*>(&real) : &whole, sizeof bytes);
    return {bytes, width == "d" ? sizeof real : width.empty() ? 1 : std::stoul(width)};
}

std::string Assemble(std::string const& line)
{
    static std::regex const pieces(R"((["'])((?:\\.|(?!\1).)*)\1(?:\*(\d+))?|([^\s:]+)(?::(\w))?)");
    std::string input;
    for (std::sregex_iterator piece(line.begin(), line.end(), pieces), end; piece != end; ++piece)
    {
        std::smatch const& part = *piece;
        if (part[4].matched)
            input += MakeNumber(part[4], part[5]);
        for (unsigned long count = part[3].matched ? std::stoul(part[3]) : 1; count != 0; --count)
            input += MakeBytes(part[2]);
        if (part[1] == "\"")
            input += '\xFF';
    }
    return input;
}

void Read(std::filesystem::path const& path, Inputs& inputs)
{
    std::ifstream file(path, std::ios::binary);
    if (std::filesystem::is_directory(path))
        for (auto const& entry : std::filesystem::directory_iterator(path))
            Read(entry.path(), inputs);
    else if (!file)
        throw std::runtime_error(path.string() + " can't be read");
    else if (path.extension() != ".txt")
        inputs[path.string()].assign(std::istreambuf_iterator<char>(file), {});
    std::vector<std::string> frames = {"..."};
    std::string name;
    for (std::string rest; path.extension() == ".txt" && file >> name && std::getline(file, rest);)
        if (name == "each")
            frames = FuzzSplit(rest, '|');
        else if (name[0] != '#')
            for (std::size_t i = 0; i < frames.size(); ++i)
            {
                std::string line = frames[i] + (frames[i].find("...") == std::string::npos ? "..." : "");
                line.replace(line.find("..."), 3, rest);
                std::string const number = i == 0 ? "" : '-' + std::to_string(i + 1);
                if (!inputs.emplace(path.stem().string() + ": " + name + number, Assemble(line)).second)
                    throw std::runtime_error(path.string() + ": two inputs are called " + name + number);
            }
}
} // namespace

int main(int argc, char** argv)
{
    Inputs inputs;
    bool const isReplay = LLVMFuzzerTestOneInput != nullptr;
    for (int i = 1; i < (isReplay ? argc : 2); ++i)
        Read(argv[i], inputs);
    if (isReplay)
        LLVMFuzzerInitialize(&argc, &argv);
    for (int const signal : {SIGABRT, SIGSEGV, SIGFPE, SIGILL, SIGALRM, SIGTERM})
        std::signal(signal, NameTheInput);
    for (auto const& [name, bytes] : inputs)
    {
        current = "while running " + name + '\n';
        // On the heap and of the exact size, so that a sanitizer sees a read beyond the end.
        std::vector<std::uint8_t> const input(bytes.begin(), bytes.end());
        if (isReplay)
            LLVMFuzzerTestOneInput(input.data(), input.size());
        else
            std::ofstream(std::filesystem::path(argv[2]) / name.substr(name.find(' ') + 1)) << bytes;
    }
    if (isReplay)
        std::cout << inputs.size() << " inputs\n";
    return inputs.empty() ? 1 : 0;
}
