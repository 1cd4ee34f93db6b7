#pragma once

#include "Command.h"

#include <string>

/// @file
/// The completion of the shells, written from the table of commands. Commands and switches stand in the scripts; what
/// the library knows, such as the names of ladders, they ask from `nxcore completion -words KIND`.

namespace nxTool
{
/// The word by which a script asks for what an argument names, such as "ladders". Files and directories are known to
/// the shells; "nothing" is never asked for.
std::string_view NameOf(Completes kind);

std::string BashCompletion();
std::string ZshCompletion();
std::string FishCompletion();
} // namespace nxTool
