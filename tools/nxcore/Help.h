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

/// The name of the command most like a word; empty when none is near.
std::string NearestCommand(std::string_view word);
} // namespace nxTool
