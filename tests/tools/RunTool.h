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

/// Runs `nxcore` through the shell.
/// @param arguments    as in a shell, quoting included
/// @param environment  assignments in front of the command, such as "TZ=UTC"
ToolRun RunTool(std::string const& arguments, std::string_view environment = {});

/// A file of this test run, with a content, removed when the process ends.
std::string MakeFile(std::string_view name, std::string_view content);
