// The companion program.

#include "Program.h"

#include "core/process/nxCmdLineArgs.h"

int main(int argc, char** argv, char** envp)
{
    return nxTool::RunProgram(nxCmdLineArgs::GetInstance(), argc, argv, envp);
}
