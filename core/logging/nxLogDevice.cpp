#include "core/logging/nxLogDevice.h"

#include "core/concurrency/nxConditionalMutexGuard.h"
#include "core/concurrency/nxMutexGuard.h"
#include "core/logging/nxLogBuildLock.h"
#include "core/logging/nxLogSite.h"
#include "core/process/nxApplicationData.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxConfigurationKeyText.h"
#include "core/text/nxFileHelper.h"
#include "core/text/nxStringHelper.h"

#include <cstdio>
#include <new>
#include <string_view>
#include <utility>

namespace
{

constexpr char pathSeparator[] = "/";
constexpr char defaultDirectory[] = "/var/log/korvane";
constexpr char lineMessageOfNone[] = "";

/// The message as a C string: what stands behind a zero byte isn't printed.
char const* GetMessage(nxLog const& log)
{
    return log.GetLogEntry() != nullptr ? log.GetLogEntry()->c_str() : lineMessageOfNone;
}

char const* GetSourceFile(nxLog const& log)
{
    return log.GetSourceFile() != nullptr ? log.GetSourceFile() : lineMessageOfNone;
}

/// All fields but the end of the line; `stamp` must stay.
nxLogLine GetLine(nxLog const& log, std::string_view stamp)
{
    nxLogLine line;
    line.level = log.GetLogLevel().GetShortDescription();
    line.stamp = stamp;
    line.hasThreadIndex = nxLogManager::GetInstance().GetLogThreadIndex();
    line.threadIndex = log.GetThreadIndex();
    line.message = GetMessage(log);
    line.sourceFile = GetSourceFile(log);
    line.lineNumber = log.GetLineNumber();
    return line;
}

/// A line of the console.
std::string GetVerboseLine(nxLog const& log)
{
    std::string const stamp = log.GetTimeStamp().GetAsString();
    nxLogLine line = GetLine(log, stamp);
    line.end = "\n";
    std::string text(line.GetMostSize(), '\0');
    text.resize(static_cast<std::size_t>(line.Write(text.data()) - text.data()));
    return text;
}

std::string GetTerseLine(nxLog const& log)
{
    return "[" + log.GetLogLevel().GetShortDescription() + "] " + GetMessage(log) + "\n";
}

bool MakeDirectory(std::string const& directory)
{
    // Another process may have been faster, so what counts after a failure is whether the directory is there.
    return nxFileHelper::DoesDirectoryExist(directory) || nxFileHelper::CreateDirectoryA(directory) ||
           nxFileHelper::DoesDirectoryExist(directory);
}

} // namespace

nxConsoleLogDevice& nxConsoleLogDevice::GetInstance()
{
    static nxConsoleLogDevice* const instance = new nxConsoleLogDevice;
    return *instance;
}

// Built at load: a child of fork() could not wait for another thread to finish it.
[[maybe_unused]] static nxConsoleLogDevice const& builtAtLoad = nxConsoleLogDevice::GetInstance();

nxErrorEnum nxConsoleLogDevice::Destroy()
{
    return nxErrorEnum();
}

void nxConsoleLogDevice::Write(nxLog const& log)
{
    try
    {
        std::string const text = GetVerboseOutput() ? GetVerboseLine(log) : GetTerseLine(log);
        (void)std::fwrite(text.data(), 1, text.size(), stdout);
    }
    catch (std::bad_alloc const&)
    {
        (void)std::fprintf(stdout, "[%s] %s\n", log.GetLogLevel().GetShortDescription().c_str(),
                           GetMessage(log));
    }
}

void nxConsoleLogDevice::Flush()
{
    (void)std::fflush(stdout);
}

constinit std::atomic<nxFileLogDevice*> nxFileLogDevice::_instance = nullptr;

nxFileLogDevice& nxFileLogDevice::GetInstance()
{
    if (nxFileLogDevice* const instance = _GetExisting())
    {
        return *instance;
    }
    nxLogBuildLock lock;
    if (_GetExisting() == nullptr)
    {
        _instance.store(new nxFileLogDevice, std::memory_order_release);
    }
    return *_GetExisting();
}

nxFileLogDevice* nxFileLogDevice::_GetExisting()
{
    return _instance.load(std::memory_order_acquire);
}

nxFileLogDevice::nxFileLogDevice()
{
    constexpr unsigned int usualSize = 1048576;
    constexpr unsigned int bitsOfMegabyte = 20;

    nxValueWrapper<unsigned long long, -1, -2> const megabytes =
        nxCmdLineArgs::GetInstance().GetEnvValueAsUInteger64(
            nxConfigurationKeyText::KVT_LOG_FILE_BUFF_SIZE_MB);
    bool const isSet = megabytes.IsValid() && megabytes.GetValue() != 0;
    // In 32 bits: 4096 and its multiples give 0, which is the least buffer.
    _bufferSize = isSet ? static_cast<unsigned int>(megabytes.GetValue()) << bitsOfMegabyte : usualSize;
}

bool nxFileLogDevice::Create(nxValueWrapper<unsigned long long, -1, -2> const& maximumSize)
{
    nxMutexGuard guard(_mutex);
    if (_file.IsOpen())
    {
        return false;
    }
    _maximumSize = maximumSize;
    _startTime = nxApplicationData::GetStartTime();
    return _CreateLogFile(_startTime, false);
}

bool nxFileLogDevice::_CreateLogFile(nxDateTime const& time, bool lock)
{
    nxConditionalMutexGuard guard(_mutex, lock);
    return _OpenLogFile(_GetNewFileName(time));
}

std::string nxFileLogDevice::_GetNewFileName(nxDateTime const& time) const
{
    return GenerateFileName(".log", _maximumSize.IsValid(), _sequenceNumber, time, true, true);
}

bool nxFileLogDevice::_OpenLogFile(std::string name)
{
    _isReopenDue = false;
    if (!_file.Open(std::move(name), _bufferSize))
    {
        (void)std::fprintf(stderr, "Failed to create log file. Filename: %s\n", _file.GetPath().c_str());
        return false;
    }
    if (!_file.HasBuffer())
    {
        (void)std::fputs("Failed to set a buffer for the log file, performance may be degraded.\n", stderr);
    }
    return true;
}

void nxFileLogDevice::_CloseLogFile(bool lock)
{
    nxConditionalMutexGuard guard(_mutex, lock);
    _file.Close();
}

bool nxFileLogDevice::CloseAndReopenLogFile()
{
    std::string oldName;
    {
        nxMutexGuard guard(_mutex);
        oldName = _file.GetPath();
    }
    NX_LOG(NX_INF, "Closing log file: " << oldName);
    nxLogManager::GetInstance()._WaitForQueuedStatements();

    std::string newName;
    bool isCreated = false;
    {
        nxMutexGuard guard(_mutex);
        nxDateTime const now;
        newName = _GetNewFileName(now); // first, since it may throw
        std::string name = newName;
        _CloseLogFile(false);
        _startTime = now;
        isCreated = _OpenLogFile(std::move(name));
    }
    if (isCreated)
    {
        NX_LOG(NX_INF, "Successfully opened log file: " << newName << ", Previous log file: " << oldName);
    }
    return isCreated;
}

nxErrorEnum nxFileLogDevice::Destroy()
{
    nxMutexGuard guard(_mutex);
    _CloseLogFile(false);
    _file.GiveUp();
    _isReopenDue = false;
    return nxErrorEnum();
}

void nxFileLogDevice::Write(nxLog const& log)
{
    nxMutexGuard guard(_mutex);
    if (_isReopenDue)
    {
        _OpenFileOfChild();
    }
    if (_file.IsOpen())
    {
        _AppendLine(log);
    }
}

void nxFileLogDevice::_AppendLine(nxLog const& log)
{
    nxLogLine const line = GetLine(log, _stampText.Get(log.GetTimeStamp()));
    char* const begin = _file.Reserve(line.GetMostSize());
    if (begin == nullptr)
    {
        return;
    }
    std::size_t const size = static_cast<std::size_t>(line.Write(begin) - begin);
    _file.Commit(size);
    _bytesWritten += size;
    if (_maximumSize.IsValid() && _bytesWritten > _maximumSize.GetValue())
    {
        _CutOver();
    }
}

// The limit is tested after the line, so a file may exceed it by one line; the next file has the same time in its
// name and the next number.
void nxFileLogDevice::_CutOver()
{
    ++_sequenceNumber;
    std::string name;
    try
    {
        name = _GetNewFileName(_startTime);
    }
    catch (std::bad_alloc const&)
    {
        --_sequenceNumber; // the next line exceeds the limit as well
        return;
    }
    _bytesWritten = 0;
    _CloseLogFile(false);
    (void)_OpenLogFile(std::move(name));
}

void nxFileLogDevice::_OpenFileOfChild()
{
    try
    {
        // A process that forks for days gets the same process numbers again; with the time they make a new name.
        nxDateTime const now;
        std::string name = _GetNewFileName(now);
        _startTime = now;
        (void)_OpenLogFile(std::move(name));
    }
    catch (std::bad_alloc const&)
    {
        // It stays due.
    }
}

void nxFileLogDevice::Flush()
{
    nxMutexGuard guard(_mutex);
    _file.Flush();
}

std::string nxFileLogDevice::GenerateLogDirectoryFilenamePrefix(nxDateTime const&)
{
    std::string directory =
        nxCmdLineArgs::GetInstance().GetEnvValue(nxConfigurationKeyText::KVT_LOG_DIRECTORY);
    if (directory.empty())
    {
        directory = defaultDirectory;
    }
    if (!MakeDirectory(directory))
    {
        return std::string();
    }
    directory += pathSeparator;
    std::string const dated = directory + nxDateTime().GetAsString("%d%b%Y");
    return MakeDirectory(dated) ? dated + pathSeparator : directory;
}

std::string nxFileLogDevice::GenerateFileName(std::string const& suffix, bool addSequence,
                                              unsigned int sequence, nxDateTime const& time, bool addTime,
                                              bool addProcessID)
{
    std::string name = GenerateLogDirectoryFilenamePrefix(time);
    name += nxApplicationData::GetApplicationName();
    std::string const instance = nxApplicationData::GetApplicationInstanceName();
    if (!instance.empty())
    {
        name += "_" + instance;
    }
    if (addTime)
    {
        name += "_" + time.GetAsString("%H%M%S");
    }
    if (addProcessID)
    {
        name += "_";
        nxStringHelper::AppendAsString(name, nxApplicationData::GetProcessID());
    }
    if (addSequence)
    {
        name += "_";
        nxStringHelper::AppendAsString(name, sequence);
    }
    return name + suffix;
}

std::string nxFileLogDevice::GenerateFileName(std::string const& suffix, bool addSequence,
                                              unsigned int sequence, bool addTime, bool addProcessID)
{
    return GenerateFileName(suffix, addSequence, sequence, nxApplicationData::GetStartTime(), addTime,
                            addProcessID);
}

void nxFileLogDevice::_LockBeforeFork()
{
    (void)_mutex.Lock();
}

void nxFileLogDevice::_UnlockInParent()
{
    (void)_mutex.Unlock();
}

void nxFileLogDevice::_RemakeInChild()
{
    new (&_mutex) nxMutex;
    _isReopenDue = _isReopenDue || _file.IsOpen();
    _file.Abandon();
    _bytesWritten = 0;
}
