// Runs a fuzz target over files, for compilers without a fuzzer: the corpora are tests, and each past finding stays one.

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);
extern "C" [[gnu::weak]] int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace
{
std::string current;

void NameTheInput(int signal)
{
    std::string const& text = current;
    (void)!write(STDERR_FILENO, text.data(), text.size());
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void Run(std::filesystem::path const& path)
{
    current = "while running " + path.string() + '\n';
    std::ifstream file(path, std::ios::binary);
    std::vector<char> const bytes{std::istreambuf_iterator<char>(file), {}};
    // On the heap and of the exact size, so that a sanitizer sees a read beyond the end.
    std::vector<std::uint8_t> const input(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(input.data(), input.size());
}
} // namespace

int main(int argc, char** argv)
{
    for (int const signal : {SIGABRT, SIGSEGV, SIGFPE, SIGILL, SIGALRM, SIGTERM})
        std::signal(signal, NameTheInput);
    if (LLVMFuzzerInitialize != nullptr)
        LLVMFuzzerInitialize(&argc, &argv);
    std::vector<std::filesystem::path> inputs;
    for (int i = 1; i < argc; ++i)
    {
        if (!std::filesystem::is_directory(argv[i]))
            inputs.emplace_back(argv[i]);
        else
            for (auto const& entry : std::filesystem::directory_iterator(argv[i]))
                inputs.push_back(entry.path());
    }
    std::sort(inputs.begin(), inputs.end());
    for (auto const& path : inputs)
        Run(path);
    std::cout << inputs.size() << " inputs\n";
    return inputs.empty() ? 1 : 0;
}
