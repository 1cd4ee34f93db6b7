#include "core/process/nxCmdLineArgs.h"

#include "core/concurrency/nxMutexGuard.h"
#include "core/logging/nxLogSite.h"
#include "core/platform/nxEnvironment.h"
#include "core/platform/nxEnvironmentLock.h"
#include "core/platform/nxPThread.h"
#include "core/text/nxDigits.h"
#include "core/text/nxStringHelper.h"
#include "core/vocabulary/nxCaseSensitivityEnum.h"
#include "core/vocabulary/nxException.h"
#include "core/vocabulary/nxLogLevelEnum.h"

#include <memory>
#include <new>
#include <string_view>

namespace
{

bool BeginsWithDash(std::string const& argument)
{
    return !argument.empty() && argument.front() == '-';
}

// A sign, at least one digit, at most one point: what may stand behind a switch although it begins with a dash.
bool IsNumber(std::string const& argument)
{
    bool const isSigned = argument.front() == '-' || argument.front() == '+';
    bool digitSeen = false;
    bool pointSeen = false;
    for (std::size_t i = isSigned ? 1 : 0; i < argument.size(); ++i)
        if (nxDigits::ValueOf(argument[i]) <= 9)
            digitSeen = true;
        else if (argument[i] == '.' && !pointSeen)
            pointSeen = true;
        else
            return false;
    return digitSeen;
}

// Wraps around in the width of T when the digits are too many.
template <typename T>
nxValueWrapper<T, -1, -2> ReadUnsigned(std::string const& text)
{
    T value = 0;
    return nxDigits::ReadAll(text, value) ? nxValueWrapper<T, -1, -2>(value) : nxValueWrapper<T, -1, -2>();
}

nxDecimal ReadDecimal(std::string const& text)
{
    return text.empty() ? nxDecimal::GetNullDecimal() : nxDecimal(text, '.');
}

nxDoubleValueWrapper ReadDouble(std::string const& text)
{
    double value = 0.0;
    if (text.empty() || !nxStringHelper::SetFromString(text, value, '.').IsOK())
        return nxDoubleValueWrapper::GetNullInstance();
    return nxDoubleValueWrapper(value);
}

bool IsOneOf(std::string const& text, std::string const& word, std::string const& otherWord)
{
    nxCaseSensitivityEnum const anyCase(NX_CASE_INSENSITIVE);
    return nxStringHelper::Compare(text, word, anyCase) || nxStringHelper::Compare(text, otherWord, anyCase);
}

// Two digits at `position`, below `limit`; -1 for anything else.
int ReadTwoDigits(std::string const& text, std::size_t position, unsigned int limit)
{
    unsigned int number = 0;
    bool const isRead = nxDigits::ReadAll(std::string_view(text).substr(position, 2), number);
    return isRead && number < limit ? static_cast<int>(number) : -1;
}

std::string ReadFromSystem(std::string const& name)
{
    constexpr unsigned int usualSize = 1024;
    char buffer[usualSize];
    unsigned int length = nxPlatform::GetEnvironmentVariableA(name.c_str(), buffer, usualSize);
    if (length < usualSize)
        return std::string(buffer, length);
    // The variable may grow again between the two calls of a round.
    for (;;)
    {
        unsigned int const size = length + 1;
        std::unique_ptr<char[]> const larger(new (std::nothrow) char[size]);
        if (larger == nullptr)
            return std::string();
        length = nxPlatform::GetEnvironmentVariableA(name.c_str(), larger.get(), size);
        if (length < size)
            return std::string(larger.get(), length);
    }
}

std::string Find(std::map<std::string, std::string> const& values, std::string const& name)
{
    auto const found = values.find(name);
    return found == values.end() ? std::string() : found->second;
}

} // namespace

nxCmdLineArgs::nxCmdLineArgs() = default;

nxCmdLineArgs::nxCmdLineArgs(nxCmdLineArgs const& other)
{
    nxMutexGuard guard(other._mutex);
    _argsRead = other._argsRead;
    _envsRead = other._envsRead;
    _command = other._command;
    _args = other._args;
    _unprocessedArgs = other._unprocessedArgs;
    _envs = other._envs;
    _rawArgv = other._rawArgv;
    _rawEnvp = other._rawEnvp;
}

nxCmdLineArgs::~nxCmdLineArgs() = default;

nxCmdLineArgs& nxCmdLineArgs::operator=(nxCmdLineArgs const&)
{
    return *this;
}

nxCmdLineArgs& nxCmdLineArgs::GetInstance()
{
    static nxCmdLineArgs* const instance = _Create();
    return *instance;
}

// fork() takes the locks of the handlers registered last first. So those of the environment's lock, which is asked for
// under this object's mutex, are registered before, and the object is built at load, before anybody who asks it for a
// value while holding a lock of his own registers his.
nxCmdLineArgs* nxCmdLineArgs::_Create()
{
    {
        nxPlatform::EnvironmentLock registersItself;
    }
    (void)pthread_atfork([] { (void)GetInstance()._mutex.Lock(); },
                         [] { (void)GetInstance()._mutex.Unlock(); },
                         [] { (void)GetInstance()._mutex.Unlock(); });
    return new nxCmdLineArgs;
}

namespace
{

[[maybe_unused]] nxCmdLineArgs const& builtAtLoad = nxCmdLineArgs::GetInstance();

} // namespace

void nxCmdLineArgs::Initialise(char** argv, char** envp)
{
    nxMutexGuard guard(_mutex);
    if (!_argsRead && argv != nullptr)
    {
        _ReadArgs(argv);
        _rawArgv = argv;
    }
    if (!_envsRead && envp != nullptr)
    {
        _ReadEnvs(envp);
        _rawEnvp = envp;
    }
}

void nxCmdLineArgs::_ReadArgs(char** argv)
{
    _argsRead = true;
    if (*argv == nullptr)
        return;
    _command = *argv;

    std::string name;
    bool isPending = false; // beside the name, since a lone dash is a switch with an empty one
    while (*++argv != nullptr)
    {
        std::string const argument(*argv);
        if (isPending && (!BeginsWithDash(argument) || IsNumber(argument)))
        {
            _args[name] = argument;
            isPending = false;
        }
        else if (BeginsWithDash(argument))
        {
            if (isPending)
                _args[name].clear();
            name = argument.substr(1);
            isPending = true;
        }
        else
        {
            _unprocessedArgs.push_back(argument);
        }
    }
    if (isPending)
        _args[name].clear();
}

void nxCmdLineArgs::_ReadEnvs(char** envp)
{
    for (; *envp != nullptr; ++envp)
    {
        std::string const entry(*envp);
        std::size_t const equals = entry.find('=');
        if (equals != std::string::npos)
            _envs[entry.substr(0, equals)] = entry.substr(equals + 1);
    }
    _envsRead = true;
}

std::string const& nxCmdLineArgs::GetCommand() const
{
    return _command;
}

char** nxCmdLineArgs::GetRawArgv() const
{
    return _rawArgv;
}

char** nxCmdLineArgs::GetRawEnvp() const
{
    return _rawEnvp;
}

std::string nxCmdLineArgs::GetArgValue(std::string const& name) const
{
    nxMutexGuard guard(_mutex);
    return Find(_args, name);
}

bool nxCmdLineArgs::IsArgDefined(std::string const& name) const
{
    nxMutexGuard guard(_mutex);
    return _args.find(name) != _args.end();
}

nxVolume nxCmdLineArgs::GetArgValueAsVolume(std::string const& name) const
{
    return ReadUnsigned<unsigned int>(GetArgValue(name));
}

nxVolume nxCmdLineArgs::GetEnvValueAsVolume(std::string const& name) const
{
    return ReadUnsigned<unsigned int>(GetEnvValue(name));
}

nxValueWrapper<unsigned long long, -1, -2>
nxCmdLineArgs::GetEnvValueAsUInteger64(std::string const& name) const
{
    return ReadUnsigned<unsigned long long>(GetEnvValue(name));
}

nxDecimal nxCmdLineArgs::GetArgValueAsDecimal(std::string const& name) const
{
    return ReadDecimal(GetArgValue(name));
}

nxDecimal nxCmdLineArgs::GetEnvValueAsDecimal(std::string const& name) const
{
    return ReadDecimal(GetEnvValue(name));
}

nxDoubleValueWrapper nxCmdLineArgs::GetArgValueAsDoubleValue(std::string const& name) const
{
    return ReadDouble(GetArgValue(name));
}

nxDoubleValueWrapper nxCmdLineArgs::GetEnvValueAsDoubleValue(std::string const& name) const
{
    return ReadDouble(GetEnvValue(name));
}

std::string nxCmdLineArgs::GetEnvValue(std::string const& name) const
{
    nxMutexGuard guard(_mutex);
    return _envsRead ? Find(_envs, name) : ReadFromSystem(name);
}

bool nxCmdLineArgs::GetEnvValueAsBool(std::string const& name) const
{
    return GetEnvValueAsBool(name, false);
}

bool nxCmdLineArgs::GetEnvValueAsBool(std::string const& name, bool defaultValue) const
{
    std::string const value = GetEnvValue(name);
    if (IsOneOf(value, "TRUE", "YES"))
        return true;
    return !IsOneOf(value, "FALSE", "NO") && defaultValue;
}

nxDateTime nxCmdLineArgs::GetEnvValueAsHHMMSS(std::string const& name) const
{
    nxDateTime result = nxDateTime::GetNullDateTime();
    std::string const value = GetEnvValue(name);
    bool const withSeconds = value.size() == 8;
    if ((!withSeconds && value.size() != 5) || value[2] != ':' || (withSeconds && value[5] != ':'))
        return result;
    int const hour = ReadTwoDigits(value, 0, 24);
    int const minute = ReadTwoDigits(value, 3, 60);
    int const second = withSeconds ? ReadTwoDigits(value, 6, 60) : 0;
    if (hour < 0 || minute < 0 || second < 0)
        return result;
    try
    {
        // One after the other: each setter puts the moment right again, which counts on days with a clock change.
        result = nxDateTime();
        result.SetHour(hour);
        result.SetMinute(minute);
        result.SetSecond(second);
    }
    catch (nxException const&)
    {
        // The value stays as far as it had got.
    }
    return result;
}

bool nxCmdLineArgs::SetEnvValue(std::string const& name, std::string const& value)
{
    if (name.empty())
        return false;
    if (!nxPlatform::SetEnvironmentVariableA(name.c_str(), value.c_str()))
    {
        NX_LOG(NX_ERR, "Failed to change environment variable. " << name << "=" << value);
        return false;
    }
    // Before the mutex is taken: the first line of a process builds the log, which reads its keys from here.
    NX_LOG(NX_INF, "Successfully changed environment variable.  " << name << "=" << value);

    nxMutexGuard guard(_mutex);
    if (!_envsRead)
        return true;
    if (value.empty())
        _envs.erase(name);
    else
        _envs[name] = value;
    return true;
}

void nxCmdLineArgs::GetArgs(std::map<std::string, std::string>& args) const
{
    nxMutexGuard guard(_mutex);
    args = _args;
}

void nxCmdLineArgs::GetEnvs(std::map<std::string, std::string>& envs) const
{
    nxMutexGuard guard(_mutex);
    envs = _envs;
}

void nxCmdLineArgs::GetUnprocessedArgs(std::vector<std::string>& unprocessedArgs) const
{
    nxMutexGuard guard(_mutex);
    unprocessedArgs = _unprocessedArgs;
}

void nxCmdLineArgs::Dump(nxLogLevelEnum const& level) const
{
    std::map<std::string, std::string> args;
    std::map<std::string, std::string> envs;
    {
        nxMutexGuard guard(_mutex);
        args = _args;
        envs = _envs;
    }
    NX_LOG(level, "Command Line Args:");
    for (auto const& [name, value] : args)
        NX_LOG(level, name << " " << value);
    NX_LOG(level, "Environment Variables:");
    for (auto const& [name, value] : envs)
        NX_LOG(level, name << "=" << value);
}
