#include "Program.h"

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

namespace nxTool
{
namespace
{
int ExitCode(Status status)
{
    return static_cast<int>(status);
}

bool IsJsonWanted(nxCmdLineArgs const& commandLine)
{
    return commandLine.IsArgDefined("json");
}

/// Whoever asked for a document gets one, also when nothing can be done.
int ComplainAndExit(nxCmdLineArgs const& commandLine, std::string_view words)
{
    std::string const complaint = Printable(words);
    if (IsJsonWanted(commandLine))
    {
        Result result;
        result.AddProblem("", complaint);
        result.PrintJson(std::cout);
    }
    std::cerr << "nxcore: " << complaint << '\n';
    return ExitCode(Status::Unusable);
}

void Print(Result const& result, bool asJson)
{
    if (asJson)
        result.PrintJson(std::cout);
    else
        result.PrintText(std::cout, UsesColour(Stream::Output));
    std::cout.flush();
    result.PrintProblems(std::cerr, UsesColour(Stream::Error));
    for (Problem const& problem : result.GetProblems())
        NX_LOG(NX_DBG, "Problem: " << Printable(problem.column + " " + problem.reason));
}

int Run(Command const& command, nxCmdLineArgs const& commandLine)
{
    Arguments const arguments(command, commandLine);
    if (!arguments.GetFault().empty())
        return ComplainAndExit(commandLine, std::string(command.name) + ": " + arguments.GetFault() +
                                                " (see nxcore " + std::string(command.name) + " -help)");
    bool const asJson = IsJsonWanted(commandLine);
    Result result;
    if (arguments.Has("help"))
    {
        result.AddText("help", HelpOf(command));
        Print(result, asJson);
        return ExitCode(Status::Good);
    }
    if (auto const directory = arguments.GetOption("log"))
    {
        std::string const fault = OpenOwnLog(*directory);
        if (!fault.empty())
            return ComplainAndExit(commandLine, fault);
    }
    NX_LOG(NX_INF, "Command started: " << OwnWords(commandLine));
    Status const status = command.run(arguments, result);
    Print(result, asJson);
    bool const isFaulty = status == Status::Good && !result.GetProblems().empty();
    int const code = ExitCode(isFaulty ? Status::Faulty : status);
    NX_LOG(NX_INF, "Command ended, exit status: " << code);
    return code;
}

/// As every program of the platform begins. The log's lines would stand among those of the command, so they go to the
/// console only if the environment asks for them. That has to be settled first: the log reads its keys once.
void SetUp(nxCmdLineArgs& commandLine, char** argv, char** envp)
{
    if (commandLine.GetEnvValue(nxConfigurationKeyText::KVT_LOG_TO_CONSOLE).empty())
        (void)commandLine.SetEnvValue(nxConfigurationKeyText::KVT_LOG_TO_CONSOLE, "NO");
    commandLine.Initialise(argv, envp);
    nxApplicationData::SetApplicationName("nxcore");
}
} // namespace

int RunProgram(nxCmdLineArgs& commandLine, int argc, char** argv, char** envp)
{
    std::span<char const* const> const words(argv, static_cast<std::size_t>(argc));
    std::string_view const name = words.size() > 1 ? words[1] : "-help";
    bool const isHelp = name == "help";
    if (name == "-help" || name == "--help" || (isHelp && words.size() == 2))
    {
        std::cout << GeneralHelp();
        return ExitCode(Status::Good);
    }
    std::string_view const topic = isHelp ? words[2] : name;
    Command const* const command = FindCommand(topic);
    if (command == nullptr)
    {
        SetUp(commandLine, argv, envp);
        return ComplainAndExit(commandLine, "unknown command " + std::string(topic) +
                                                DidYouMeanCommand(topic) + " (nxcore -help lists all)");
    }
    if (isHelp)
    {
        std::cout << HelpOf(*command);
        return ExitCode(Status::Good);
    }
    OrderedWords ordered(*command, words.front(), words.subspan(2));
    SetUp(commandLine, ordered.GetArgv(), envp);
    try
    {
        return Run(*command, commandLine);
    }
    catch (std::exception const& failure)
    {
        return ComplainAndExit(commandLine, failure.what());
    }
}
} // namespace nxTool
