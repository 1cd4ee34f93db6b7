#pragma once

#include <string>

/// @file
/// The program's own log.

class nxCmdLineArgs;

namespace nxTool
{
/// Has the program's log written to a file in the directory, which is made if its parent is there.
/// @return what is wrong; empty when the file is open.
std::string OpenOwnLog(std::string const& directory);

/// The command, its arguments and its switches as one text, control characters as \xNN.
std::string OwnWords(nxCmdLineArgs const& commandLine);
} // namespace nxTool
