#pragma once

#include "Command.h"

/// @file
/// The commands, each defined in the source file of its name.

namespace nxTool
{
extern Command const manualCommand;
} // namespace nxTool
