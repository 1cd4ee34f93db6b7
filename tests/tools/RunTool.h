#pragma once

#include <string>
#include <string_view>

/// What one run of the companion program gave.
struct ToolRun
{
    int status = -1; ///< the exit status; -1 when it did not end by itself
    std::string output;
    std::string error;
};

/// Runs a line of the shell in a directory of this process's own that holds `examples`; `nxcore` is the program.
ToolRun RunLine(std::string const& line);

/// The same for `nxcore` with these arguments.
/// @param arguments    as in a shell, quoting included
/// @param environment  assignments in front of the command, such as "TZ=UTC"
ToolRun RunTool(std::string const& arguments, std::string_view environment = {});

/// A file of this test run, with a content, removed when the process ends.
std::string MakeFile(std::string_view name, std::string_view content);

/// `nxcore` running beside the test, killed at the end unless it was waited for.
class BackgroundTool
{
public:
    /// @param arguments  as in a shell, quoting included
    explicit BackgroundTool(std::string const& arguments);
    ~BackgroundTool();

    BackgroundTool(BackgroundTool const&) = delete;
    BackgroundTool& operator=(BackgroundTool const&) = delete;

    /// Waits until standard output or standard error holds the text, at most ten seconds.
    /// @return all of that stream so far.
    std::string AwaitOutput(std::string_view text) const;
    std::string AwaitError(std::string_view text) const;

    /// Interrupts it as a user does, and waits for its end.
    ToolRun Interrupt();

private:
    std::string _name;
    int _process = -1;
};
