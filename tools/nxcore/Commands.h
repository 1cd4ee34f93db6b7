#pragma once

#include "Command.h"

/// @file
/// The commands, each defined in the source file of its name.

namespace nxTool
{
extern Command const addressCommand;
extern Command const boardCommand;
extern Command const checkCommand;
extern Command const completionCommand;
extern Command const convertCommand;
extern Command const csvCommand;
extern Command const describeCommand;
extern Command const identityCommand;
extern Command const keysCommand;
extern Command const ladderCommand;
extern Command const listCommand;
extern Command const listenCommand;
extern Command const logLoadCommand;
extern Command const manualCommand;
extern Command const maskCommand;
extern Command const priceCommand;
extern Command const referenceCommand;
extern Command const sendCommand;
extern Command const versionCommand;
extern Command const whenCommand;
} // namespace nxTool
