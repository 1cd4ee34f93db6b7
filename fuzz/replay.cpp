// Runs a fuzz target over inputs, for compilers without a fuzzer: the corpora are tests, and each past finding stays one.
//
//     fuzz_TARGET FOLDER|FILE|TABLE.txt ...
//     fuzz_seeds TABLE.txt FOLDER               writes a table's inputs as files, for the fuzzer to start from
//
// A line of a table is a name and what the input is made of: "text" with the byte that ends a text, 'bytes' without, and
// numbers, of one byte or as 7:2, 7:4, 7:8 and 0.5:d of more. Quotes know \n, \r, \t, \0 and \xNN; "x"*3 is "xxx". A line
// that begins with `each` holds what all inputs below it begin with, and one that begins with # says something.

#include "fuzz/FuzzInput.h"

#include <csignal>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>

#include <unistd.h>

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

char TakeCharacter(std::istream& line)
{
    char character = static_cast<char>(line.get());
    if (character != '\\')
        return character;
    character = static_cast<char>(line.get());
    constexpr std::string_view letters = "nrt0";
    if (std::size_t const letter = letters.find(character); letter != letters.npos)
        return "\n\r\t\0"[letter];
    if (character != 'x')
        return character;
    char const digits[] = {static_cast<char>(line.get()), static_cast<char>(line.get()), '\0'};
    return static_cast<char>(std::stoi(digits, nullptr, 16));
}

std::string TakeQuoted(std::istream& line)
{
    int const quote = line.get();
    std::string piece;
    while (line && line.peek() != quote)
        piece += TakeCharacter(line);
    line.get();
    std::string bytes = piece;
    unsigned int count = 1;
    if (line.peek() == '*')
        line.get(), line >> count;
    for (; count > 1; --count)
        bytes += piece;
    return quote == '"' ? bytes + '\xFF' : bytes;
}

std::string MakeNumber(std::string const& text)
{
    std::size_t const colon = text.find(':');
    std::string const width = colon == std::string::npos ? "1" : text.substr(colon + 1);
    auto const whole = std::uint64_t{std::strtoull(text.c_str(), nullptr, 0)};
    double const real = std::strtod(text.c_str(), nullptr);
    char bytes[sizeof whole];
    std::memcpy(bytes, width == "d" ? static_cast<void const*>(&real) : &whole, sizeof bytes);
    return {bytes, width == "d" ? sizeof real : std::stoul(width)};
}

std::string Assemble(std::istream& line)
{
    std::string input;
    while (line >> std::ws && !line.eof())
    {
        std::string word;
        if (line.peek() == '"' || line.peek() == '\'')
            input += TakeQuoted(line);
        else if (line >> word)
            input += MakeNumber(word);
    }
    return input;
}

Inputs ReadTable(std::filesystem::path const& path)
{
    Inputs inputs;
    std::string each;
    std::ifstream table(path);
    if (!table)
        throw std::runtime_error(path.string() + " can't be read");
    for (std::string text; std::getline(table, text);)
    {
        std::istringstream line(text);
        std::string name;
        if (!(line >> name) || name[0] == '#')
            continue;
        if (name == "each")
            each = Assemble(line);
        else if (!inputs.emplace(path.stem().string() + ": " + name, each + Assemble(line)).second)
            throw std::runtime_error(path.string() + ": two inputs are called " + name);
    }
    return inputs;
}

void Read(std::filesystem::path const& path, Inputs& inputs)
{
    if (std::filesystem::is_directory(path))
        for (auto const& entry : std::filesystem::directory_iterator(path))
            Read(entry.path(), inputs);
    else if (path.extension() == ".txt")
        inputs.merge(ReadTable(path));
    else
    {
        std::ifstream file(path, std::ios::binary);
        inputs[path.string()].assign(std::istreambuf_iterator<char>(file), {});
    }
}
} // namespace

int main(int argc, char** argv)
{
    if (LLVMFuzzerTestOneInput == nullptr)
    {
        for (auto const& [name, input] : ReadTable(argv[1]))
            std::ofstream(std::filesystem::path(argv[2]) / name.substr(name.find(' ') + 1)) << input;
        return 0;
    }
    Inputs inputs;
    for (int i = 1; i < argc; ++i)
        Read(argv[i], inputs);
    for (int const signal : {SIGABRT, SIGSEGV, SIGFPE, SIGILL, SIGALRM, SIGTERM})
        std::signal(signal, NameTheInput);
    LLVMFuzzerInitialize(&argc, &argv);
    for (auto const& [name, bytes] : inputs)
    {
        current = "while running " + name + '\n';
        // On the heap and of the exact size, so that a sanitizer sees a read beyond the end.
        std::vector<std::uint8_t> const input(bytes.begin(), bytes.end());
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    std::cout << inputs.size() << " inputs\n";
    return inputs.empty() ? 1 : 0;
}
