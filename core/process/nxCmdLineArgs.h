#pragma once

#include "core/concurrency/nxMutex.h"
#include "core/numbers/nxDecimal.h"
#include "core/numbers/nxDoubleValueWrapper.h"
#include "core/numbers/nxValueWrapper.h"
#include "core/platform/nxExport.h"
#include "core/time/nxDateTime.h"

#include <map>
#include <string>
#include <vector>

/// @file
/// The process's view of its command line and its environment.

class nxLogLevelEnum;

/// All configuration is read through the one instance of this class, under the names of
/// `nxConfigurationKeys.h`.
///
/// It works from the first static initialiser on: until Initialise() has been given the environment, each look-up
/// asks the system and sees every change in the process. Afterwards the environment is a private copy that only
/// SetEnvValue() changes. The instance is never destroyed, so it also serves whoever runs at exit.
///
/// No getter fails: a value that is missing or can't be read is the type's null, an empty text or the given
/// default. Names are compared exactly. Any thread may call any operation, but GetCommand() and the two
/// GetRaw...() only once Initialise() has returned or while nobody calls it; nothing here logs or calls back while the
/// object's mutex is held.
///
/// @code
/// nxCmdLineArgs& arguments = nxCmdLineArgs::GetInstance();
/// arguments.Initialise(argv, envp);
/// if (arguments.IsArgDefined("verbose")) // the program was started with -verbose
/// @endcode
class NX_CORE_API nxCmdLineArgs
{
public:
    virtual ~nxCmdLineArgs();

    /// Built on first use.
    static nxCmdLineArgs& GetInstance();

    /// Takes over the command line and the environment, each once in the life of the process.
    ///
    /// A null pointer leaves its half for a later call; a half that was read already is not read again. The two
    /// arrays stay the caller's and must live as long as GetRawArgv() and GetRawEnvp() are asked for.
    ///
    /// An argument that begins with "-" is a switch, and the one behind it its value, unless that begins with "-"
    /// too and is not a number: `-offset -5` gives "offset" the value "-5", `-verbose -name x` gives "verbose" an
    /// empty value. A repeated switch keeps its last value. What is neither switch nor value is unprocessed.
    void Initialise(char** argv, char** envp);

    /// @return `argv[0]`, empty before Initialise().
    std::string const& GetCommand() const;

    /// @return the pointers given to Initialise(), null before.
    char** GetRawArgv() const;
    char** GetRawEnvp() const;

    /// @param name  the switch without its dash.
    /// @return the switch's value; empty also for a switch that is not there, which IsArgDefined() tells apart.
    std::string GetArgValue(std::string const& name) const;
    bool IsArgDefined(std::string const& name) const;

    /// Digits and nothing else, else null. A number beyond the width wraps around, and one that equals a sentinel
    /// of the wrapper is read as null or no change.
    nxVolume GetArgValueAsVolume(std::string const& name) const;
    nxVolume GetEnvValueAsVolume(std::string const& name) const;
    nxValueWrapper<unsigned long long, -1, -2> GetEnvValueAsUInteger64(std::string const& name) const;

    /// With "." as decimal point; NULL for an empty or missing value, else what nxDecimal makes of the text.
    nxDecimal GetArgValueAsDecimal(std::string const& name) const;
    nxDecimal GetEnvValueAsDecimal(std::string const& name) const;

    /// With "." as decimal point; null for a missing value and for one that is no number.
    nxDoubleValueWrapper GetArgValueAsDoubleValue(std::string const& name) const;
    nxDoubleValueWrapper GetEnvValueAsDoubleValue(std::string const& name) const;

    /// @return the variable's value; empty for one that is not set, which is not told apart from an empty one.
    std::string GetEnvValue(std::string const& name) const;

    /// @return true for "TRUE" and "YES" in any case, false for anything else.
    bool GetEnvValueAsBool(std::string const& name) const;

    /// @return true for "TRUE" and "YES", false for "FALSE" and "NO", in any case; else `defaultValue`.
    bool GetEnvValueAsBool(std::string const& name, bool defaultValue) const;

    /// Reads hours, minutes and, if there, seconds: "HH:MM" or "HH:MM:SS", two digits each.
    ///
    /// @return that time of today's local day, with the microseconds of the moment of the call; NULL for any other
    ///         text. On a day when the clocks change, an hour that is left out is moved as nxDateTime moves it.
    nxDateTime GetEnvValueAsHHMMSS(std::string const& name) const;

    /// Changes the environment of the process and, once it is read, the copy of it. An empty value removes the
    /// variable from both.
    ///
    /// Logs the change at Info, a refusal by the system at Error, before the mutex is taken: that line may be the
    /// first of the process, and then builds the log, which reads its own settings through this class.
    /// @return false, with nothing changed, for an empty name (which is not logged) and when the system refuses.
    bool SetEnvValue(std::string const& name, std::string const& value);

    /// Each replaces the caller's container with a copy.
    void GetArgs(std::map<std::string, std::string>& args) const;
    void GetEnvs(std::map<std::string, std::string>& envs) const;
    void GetUnprocessedArgs(std::vector<std::string>& unprocessedArgs) const;

    /// Logs all switches and all variables that were read, a line each and in sorted order. Mind that the values
    /// may hold passwords.
    void Dump(nxLogLevelEnum const& level) const;

protected:
    nxCmdLineArgs();

    /// Copies what `other` has read; the mutex is the copy's own.
    nxCmdLineArgs(nxCmdLineArgs const& other);

    /// Does nothing.
    nxCmdLineArgs& operator=(nxCmdLineArgs const& other);

    /// Neither takes the mutex: the caller holds it.
    void _ReadArgs(char** argv);
    void _ReadEnvs(char** envp);

private:
    static nxCmdLineArgs* _Create();

    bool _argsRead = false;
    bool _envsRead = false;
    std::string _command;
    std::map<std::string, std::string> _args;
    std::vector<std::string> _unprocessedArgs;
    std::map<std::string, std::string> _envs;
    char** _rawArgv = nullptr;
    char** _rawEnvp = nullptr;
    mutable nxMutex _mutex; ///< Guards all of these but the command and the two arrays.
};
