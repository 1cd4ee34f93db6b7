// The companion program: it finds the command, reads its arguments and prints its result.

#include "Arguments.h"
#include "Help.h"
#include "OwnLog.h"
#include "Result.h"
#include "Terminal.h"

#include "core/logging/nxLogSite.h"
#include "core/process/nxApplicationData.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxConfigurationKeyText.h"

#include <exception>
#include <iostream>

namespace
{
using nxTool::Status;

int ExitCode(Status status)
{
    return static_cast<int>(status);
}

bool IsJsonWanted()
{
    return nxCmdLineArgs::GetInstance().IsArgDefined("json");
}

/// Whoever asked for a document gets one, also when nothing can be done.
int ComplainAndExit(std::string const& complaint)
{
    if (IsJsonWanted())
    {
        nxTool::Result result;
        result.AddProblem("", complaint);
        result.PrintJson(std::cout);
    }
    std::cerr << "nxcore: " << complaint << '\n';
    return ExitCode(Status::Unusable);
}

int ComplainAboutCommand(std::string_view name)
{
    return ComplainAndExit("unknown command " + std::string(name) + nxTool::DidYouMeanCommand(name) +
                           " (nxcore -help lists all)");
}

void Print(nxTool::Result const& result)
{
    if (IsJsonWanted())
        result.PrintJson(std::cout);
    else
        result.PrintText(std::cout, nxTool::UsesColour(nxTool::Stream::Output));
    std::cout.flush();
    result.PrintProblems(std::cerr, nxTool::UsesColour(nxTool::Stream::Error));
    for (nxTool::Problem const& problem : result.GetProblems())
        NX_LOG(NX_DBG, "Problem: " << nxTool::Printable(problem.column + " " + problem.reason));
}

int Run(nxTool::Command const& command)
{
    nxTool::Arguments const arguments(command);
    if (!arguments.GetFault().empty())
        return ComplainAndExit(std::string(command.name) + ": " + arguments.GetFault() + " (see nxcore " +
                               std::string(command.name) + " -help)");
    nxTool::Result result;
    if (arguments.Has("help"))
    {
        result.AddText("help", nxTool::HelpOf(command));
        Print(result);
        return ExitCode(Status::Good);
    }
    if (auto const directory = arguments.GetOption("log"))
    {
        std::string const fault = nxTool::OpenOwnLog(*directory);
        if (!fault.empty())
            return ComplainAndExit(fault);
    }
    NX_LOG(NX_INF, "Command started: " << nxTool::OwnCommandLine());
    Status const status = command.run(arguments, result);
    Print(result);
    bool const isFaulty = status == Status::Good && !result.GetProblems().empty();
    int const code = ExitCode(isFaulty ? Status::Faulty : status);
    NX_LOG(NX_INF, "Command ended, exit status: " << code);
    return code;
}

/// As every program of the platform begins. The log's lines would stand among those of the command, so they go to the
/// console only if the environment asks for them. That has to be settled first: the log reads its keys once.
void SetUp(char** argv, char** envp)
{
    nxCmdLineArgs& arguments = nxCmdLineArgs::GetInstance();
    if (arguments.GetEnvValue(nxConfigurationKeyText::KVT_LOG_TO_CONSOLE).empty())
        (void)arguments.SetEnvValue(nxConfigurationKeyText::KVT_LOG_TO_CONSOLE, "NO");
    arguments.Initialise(argv, envp);
    nxApplicationData::SetApplicationName("nxcore");
}
} // namespace

int main(int argc, char** argv, char** envp)
{
    std::span<char const* const> const words(argv, static_cast<std::size_t>(argc));
    std::string_view const name = words.size() > 1 ? words[1] : "-help";
    if (name == "-help" || name == "--help" || name == "help")
    {
        std::cout << nxTool::GeneralHelp();
        return ExitCode(Status::Good);
    }
    nxTool::Command const* const command = nxTool::FindCommand(name);
    if (command == nullptr)
    {
        SetUp(argv, envp);
        return ComplainAboutCommand(name);
    }
    nxTool::CommandLine commandLine(*command, words.front(), words.subspan(2));
    SetUp(commandLine.GetArgv(), envp);
    try
    {
        return Run(*command);
    }
    catch (std::exception const& failure)
    {
        return ComplainAndExit(failure.what());
    }
}
