#pragma once

#include "Command.h"

#include <string>

/// @file
/// Everything that is generated from the table of commands.

namespace nxTool
{
/// What `nxcore -help` prints.
std::string GeneralHelp();

/// What `nxcore COMMAND -help` prints.
std::string HelpOf(Command const& command);

/// DidYouMean() with the names of the commands.
std::string DidYouMeanCommand(std::string_view word);
} // namespace nxTool
