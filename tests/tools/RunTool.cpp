#include "tests/tools/RunTool.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <sys/wait.h>
#include <unistd.h>

namespace
{
/// A directory of this process, removed when it ends.
class Scratch
{
public:
    Scratch() : _path(std::filesystem::temp_directory_path() / ("nxcore-test-" + std::to_string(getpid())))
    {
        std::filesystem::create_directories(_path);
    }
    ~Scratch()
    {
        std::error_code ignored;
        std::filesystem::remove_all(_path, ignored);
    }
    std::filesystem::path operator/(std::string_view name) const
    {
        return _path / name;
    }

private:
    std::filesystem::path _path;
};

Scratch const& GetScratch()
{
    static Scratch const scratch;
    return scratch;
}

std::string Contents(std::filesystem::path const& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}
} // namespace

ToolRun RunTool(std::string const& arguments, std::string_view environment)
{
    auto const output = GetScratch() / "output";
    auto const error = GetScratch() / "error";
    std::string const command = std::string(environment) + " '" NX_TOOL_PATH "' " + arguments + " >'" +
                                output.string() + "' 2>'" + error.string() + "' </dev/null";
    int const status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Contents(output), Contents(error)};
}

std::string MakeFile(std::string_view name, std::string_view content)
{
    auto const path = GetScratch() / name;
    std::ofstream(path, std::ios::binary) << content;
    return path.string();
}
