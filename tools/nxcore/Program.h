#pragma once

class nxCmdLineArgs;

namespace nxTool
{
/// Finds the command, has it run and prints its result.
/// @param commandLine  reads the command line and the environment; nobody has given it either before
/// @return the exit status
int RunProgram(nxCmdLineArgs& commandLine, int argc, char** argv, char** envp);
} // namespace nxTool
