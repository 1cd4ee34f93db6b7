#include "core/logging/nxFileLogDevice.h"

#include "core/concurrency/nxConditionalMutexGuard.h"
#include "core/concurrency/nxMutexGuard.h"
#include "core/logging/nxLogBuildLock.h"
#include "core/logging/nxLogLine.h"
#include "core/logging/nxLogSite.h"
#include "core/process/nxApplicationData.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxConfigurationKeyText.h"
#include "core/text/nxFileHelper.h"
#include "core/text/nxStringHelper.h"

#include <cstdio>
#include <new>
#include <utility>

namespace
{

constexpr char pathSeparator[] = "/";
constexpr char defaultDirectory[] = "/var/log/korvane";

bool MakeDirectory(std::string const& directory)
{
    // Another process may have been faster, so what counts after a failure is whether the directory is there.
    return nxFileHelper::DoesDirectoryExist(directory) || nxFileHelper::CreateDirectoryA(directory) ||
           nxFileHelper::DoesDirectoryExist(directory);
}

} // namespace

constinit std::atomic<nxFileLogDevice*> nxFileLogDevice::_instance = nullptr;

nxFileLogDevice& nxFileLogDevice::GetInstance()
{
    if (nxFileLogDevice* const instance = _GetExisting())
        return *instance;
    nxLogBuildLock lock(nxLogBuildLock::fileDevice);
    if (_GetExisting() == nullptr)
        _instance.store(new nxFileLogDevice, std::memory_order_release);
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
        return false;
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
    bool const isOpen = _TryToOpen(std::move(name));
    if (!isOpen)
        (void)std::fprintf(stderr, "Failed to create log file. Filename: %s\n", _file.GetPath().c_str());
    return isOpen;
}

bool nxFileLogDevice::_TryToOpen(std::string name)
{
    _isReopenDue = false;
    _isReopenRefused = false;
    if (!_file.Open(std::move(name), _bufferSize))
        return false;
    _isFileOfChildDue = false;
    if (!_file.HasBuffer())
        (void)std::fputs("Failed to set a buffer for the log file, performance may be degraded.\n", stderr);
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
        NX_LOG(NX_INF, "Successfully opened log file: " << newName << ", Previous log file: " << oldName);
    return isCreated;
}

nxErrorEnum nxFileLogDevice::Destroy()
{
    nxMutexGuard guard(_mutex);
    _CloseLogFile(false);
    _file.GiveUp();
    _isReopenDue = false;
    _isReopenRefused = false;
    _isFileOfChildDue = false;
    return nxErrorEnum();
}

void nxFileLogDevice::Write(nxLog const& log)
{
    nxMutexGuard guard(_mutex);
    if (_isReopenDue)
        _Reopen();
    if (_file.IsOpen())
        _AppendLine(log);
    else if (_isReopenDue || _isReopenRefused)
        _file.CountLostLine();
}

void nxFileLogDevice::_AppendLine(nxLog const& log)
{
    nxLogLine const line = nxLogLine::Of(log, _stampText.Get(log.GetTimeStamp()));
    char* const begin = _file.Reserve(line.GetMostSize());
    if (begin == nullptr)
        return;
    std::size_t const size = static_cast<std::size_t>(line.Write(begin) - begin);
    _file.Commit(size);
    _bytesWritten += size;
    if (_maximumSize.IsValid() && _bytesWritten > _maximumSize.GetValue())
        _CutOver();
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
    _isReopenRefused = !_OpenLogFile(std::move(name));
}

// Nobody is told of a failure here, so the next batch tries again.
void nxFileLogDevice::_Reopen()
{
    try
    {
        // A process that forks for days gets the same process numbers again; with the time they make a new name.
        nxDateTime const time = _isFileOfChildDue ? nxDateTime() : _startTime;
        std::string name = _GetNewFileName(time);
        _startTime = time;
        bool const isRetry = _isReopenRefused; // what it fails by has been reported
        _isReopenRefused = isRetry ? !_TryToOpen(std::move(name)) : !_OpenLogFile(std::move(name));
    }
    catch (std::bad_alloc const&)
    {
        // It stays due.
    }
}

void nxFileLogDevice::Flush()
{
    constexpr std::chrono::seconds betweenAttempts(1);

    nxMutexGuard guard(_mutex);
    _file.Flush();
    if (_isReopenRefused && std::chrono::steady_clock::now() >= _nextAttempt)
    {
        _isReopenDue = true;
        _nextAttempt = std::chrono::steady_clock::now() + betweenAttempts;
    }
}

std::string nxFileLogDevice::GenerateLogDirectoryFilenamePrefix(nxDateTime const&)
{
    std::string directory =
        nxCmdLineArgs::GetInstance().GetEnvValue(nxConfigurationKeyText::KVT_LOG_DIRECTORY);
    if (directory.empty())
        directory = defaultDirectory;
    if (!MakeDirectory(directory))
        return std::string();
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
        name += "_" + instance;
    if (addTime)
        name += "_" + time.GetAsString("%H%M%S");
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
    _isFileOfChildDue = _isFileOfChildDue || _isReopenDue || _isReopenRefused || _file.IsOpen();
    _isReopenDue = _isFileOfChildDue;
    _isReopenRefused = false;
    _file.Abandon();
    _bytesWritten = 0;
}
