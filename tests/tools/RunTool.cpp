#include "tests/tools/RunTool.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

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
        std::filesystem::create_directory_symlink(NX_EXAMPLES_PATH, _path / "examples");
    }
    ~Scratch()
    {
        std::error_code ignored;
        std::filesystem::remove_all(_path, ignored);
    }
    std::string GetPath() const
    {
        return _path.string();
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

std::string AwaitContents(std::filesystem::path const& path, std::string_view text)
{
    auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    std::string contents;
    while ((contents = Contents(path)).find(text) == std::string::npos &&
           std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return contents;
}
} // namespace

ToolRun RunLine(std::string const& line)
{
    auto const output = GetScratch() / ".output";
    auto const error = GetScratch() / ".error";
    // A group of its own line, so that only what the line itself ends with counts.
    std::string const command = "PATH='" NX_TOOL_DIRECTORY "':$PATH; cd '" + GetScratch().GetPath() +
                                "'; {\n" + line + "\n} >'" + output.string() + "' 2>'" + error.string() +
                                "' </dev/null";
    int const status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Contents(output), Contents(error)};
}

ToolRun RunTool(std::string const& arguments, std::string_view environment)
{
    return RunLine(std::string(environment) + " nxcore " + arguments);
}

std::string MakeFile(std::string_view name, std::string_view content)
{
    auto const path = GetScratch() / name;
    std::ofstream(path, std::ios::binary) << content;
    return path.string();
}

BackgroundTool::BackgroundTool(std::string const& arguments)
{
    static int count = 0;
    _name = "background" + std::to_string(++count);
    auto const path = GetScratch() / _name;
    std::string const command = "exec '" NX_TOOL_DIRECTORY "/nxcore' " + arguments + " >'" + path.string() +
                                ".output' 2>'" + path.string() + ".error' </dev/null";
    _process = fork();
    if (_process == 0)
    {
        execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
        _exit(127);
    }
}

BackgroundTool::~BackgroundTool()
{
    if (_process != -1)
    {
        kill(_process, SIGKILL);
        waitpid(_process, nullptr, 0);
    }
}

std::string BackgroundTool::AwaitOutput(std::string_view text) const
{
    return AwaitContents(GetScratch() / (_name + ".output"), text);
}

std::string BackgroundTool::AwaitError(std::string_view text) const
{
    return AwaitContents(GetScratch() / (_name + ".error"), text);
}

ToolRun BackgroundTool::Interrupt()
{
    int status = 0;
    kill(_process, SIGINT);
    waitpid(_process, &status, 0);
    _process = -1;
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Contents(GetScratch() / (_name + ".output")),
            Contents(GetScratch() / (_name + ".error"))};
}
