#include "core/logging/nxLogManager.h"

#include "core/concurrency/nxConditionalMutexGuard.h"
#include "core/concurrency/nxHeldAcrossForks.h"
#include "core/concurrency/nxMutexGuard.h"
#include "core/logging/nxConsoleLogDevice.h"
#include "core/logging/nxFileLogDevice.h"
#include "core/logging/nxLog.h"
#include "core/logging/nxLogBuildLock.h"
#include "core/logging/nxLogCycles.h"
#include "core/logging/nxLogDeferredWriteThread.h"
#include "core/logging/nxLogSlots.h"
#include "core/platform/nxEnvironmentLock.h"
#include "core/platform/nxPThread.h"
#include "core/platform/nxThreads.h"
#include "core/process/nxApplicationData.h"
#include "core/process/nxCmdLineArgs.h"
#include "core/process/nxConfigurationKeyText.h"
#include "core/text/nxDigits.h"
#include "core/vocabulary/nxAsciiLetters.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <utility>

namespace
{

/// How many passes over the devices this thread is in.
constinit thread_local unsigned int ownPasses = 0;

std::string GetKey(char const* key)
{
    return nxCmdLineArgs::GetInstance().GetEnvValue(key);
}

} // namespace

constinit std::atomic<unsigned int> nxLogManager::_minimumLogLevel = static_cast<unsigned int>(NX_INF);
constinit std::atomic<nxLogManager*> nxLogManager::_instance = nullptr;

nxLogManager& nxLogManager::GetInstance()
{
    nxLogManager* const instance = _instance.load(std::memory_order_acquire);
    return instance != nullptr ? *instance : _Build();
}

nxLogManager& nxLogManager::_Build()
{
    nxLogBuildLock lock(nxLogBuildLock::manager);
    nxLogManager* instance = _instance.load(std::memory_order_acquire);
    if (instance == nullptr)
    {
        instance = new nxLogManager;
        _instance.store(instance, std::memory_order_release);
        (void)std::atexit(_DestroyAtExit);
    }
    return *instance;
}

nxLogManager::nxLogManager() : _devicesMutex(true), _cycles(*new nxLogCycles)
{
    bool const forceFlush =
        nxCmdLineArgs::GetInstance().GetEnvValueAsBool(nxConfigurationKeyText::KVT_LOG_FORCE_FLUSH);
    if (!forceFlush)
    {
        nxValueWrapper<unsigned long long, -1, -2> const entries =
            nxCmdLineArgs::GetInstance().GetEnvValueAsUInteger64(
                nxConfigurationKeyText::KVT_LOG_BUFF_RESERVE_ENTRIES);
        if (entries.IsValid())
            _Reserve(entries.GetValue());
    }
    _forceFlush = forceFlush;
    if (!_forceFlush)
        _StartWriter();
    _logThreadIndex =
        nxCmdLineArgs::GetInstance().GetEnvValueAsBool(nxConfigurationKeyText::KVT_LOG_THREAD_INDEX);
    _ReadLevel();
    _RegisterConsole();
}

void nxLogManager::_ReadLevel()
{
    std::string const text = GetKey(nxConfigurationKeyText::KVT_LOG_LEVEL);
    int const number = text.empty() ? 1 : nxDigits::ReadLeading(text);
    nxLogLevelEnum level;
    level.SetFromNumericLogLevel(static_cast<unsigned int>(number));
    _minimumLogLevel.store(level.GetValue(), std::memory_order_relaxed);
}

void nxLogManager::_RegisterConsole()
{
    nxConsoleLogDevice& console = nxConsoleLogDevice::GetInstance();
    std::string output = GetKey(nxConfigurationKeyText::KVT_LOG_TO_CONSOLE);
    nxAsciiLetters::ToUpper(output);
    if (output == "NO" || output == "FALSE")
        return;
    if (output == "TERSE" || output == "BRIEF")
        console.SetVerboseOutput(false);
    RegisterLogDevice(&console);
}

void nxLogManager::Write(nxLog& log)
{
    if (!ShouldLog(log.GetLogLevel()))
        return;
    if (_forceFlush)
    {
        ImmediateWrite(log);
        FlushDevices();
        return;
    }
    // What a device logs waits for the next statement of another: it comes with the devices mutex, and a thread that
    // forks has the thread mutex and waits for that one.
    if (_isWriterMissing.load(std::memory_order_relaxed) && ownPasses == 0)
        _RestartWriter();
    _entriesQueue.Push(log);
}

/// Holds the list of devices for a pass over it.
///
/// Devices may register and unregister while they write. A pass goes by index against the present size, and a place
/// that falls free stays empty until the pass is over: else the device behind it would be left out.
class nxLogManager::_Pass
{
public:
    explicit _Pass(nxLogManager& manager) : _manager(manager), _guard(manager._devicesMutex)
    {
        ++_manager._passes;
        ++ownPasses;
    }

    ~_Pass()
    {
        --ownPasses;
        if (--_manager._passes == 0)
            std::erase(_manager._devices, nullptr);
    }

    _Pass(_Pass const&) = delete;
    _Pass& operator=(_Pass const&) = delete;

private:
    nxLogManager& _manager;
    nxMutexGuard _guard;
};

void nxLogManager::ImmediateWrite(nxLog const& log)
{
    _Pass pass(*this);
    for (std::size_t i = 0; i < _devices.size(); ++i)
        if (_devices[i] != nullptr)
            _devices[i]->Write(log);
}

void nxLogManager::ImmediateWrite(std::vector<nxLog*> const& logs)
{
    _Pass pass(*this);
    for (std::size_t i = 0; i < _devices.size(); ++i)
        for (std::size_t j = 0; j < logs.size() && _devices[i] != nullptr; ++j)
            _devices[i]->Write(*logs[j]);
}

void nxLogManager::FlushDevices()
{
    _Pass pass(*this);
    for (std::size_t i = 0; i < _devices.size(); ++i)
        if (_devices[i] != nullptr)
            _devices[i]->Flush();
}

void nxLogManager::RegisterLogDevice(nxLogDevice* device)
{
    nxMutexGuard guard(_devicesMutex);
    if (std::find(_devices.begin(), _devices.end(), device) == _devices.end())
        _devices.push_back(device);
}

void nxLogManager::UnregisterLogDevice(nxLogDevice* device)
{
    _Pass pass(*this);
    std::replace(_devices.begin(), _devices.end(), device, static_cast<nxLogDevice*>(nullptr));
}

void nxLogManager::UnregisterAllLogDevices()
{
    _Pass pass(*this);
    std::fill(_devices.begin(), _devices.end(), nullptr);
}

nxErrorEnum nxLogManager::Destroy()
{
    if (_forceFlush)
    {
        _DestroyAllDevices();
        return nxErrorEnum();
    }
    // A device that ends the process while another thread, or this one, is in here already: that waits for the device's
    // return.
    bool const isWaitedFor = _isBeingDestroyed.exchange(true) && ownPasses != 0;
    {
        nxConditionalMutexGuard guard(_threadMutex, !isWaitedFor);
        if (!isWaitedFor)
            _StopWriter();
        // What a device logs from here on stays on the queue.
        std::vector<nxLog*> logs;
        _entriesQueue.Swap(logs);
        ImmediateWrite(logs);
        nxLogSlots::Recycle(logs);
        FlushDevices();
        _isBeingDestroyed = isWaitedFor;
    }
    _DestroyAllDevices();
    return nxErrorEnum();
}

void nxLogManager::_DestroyAllDevices()
{
    _Pass pass(*this);
    for (std::size_t i = 0; i < _devices.size(); ++i)
        if (_devices[i] != nullptr)
            (void)_devices[i]->Destroy();
    UnregisterAllLogDevices();
}

void nxLogManager::_StartWriter()
{
    auto thread = std::make_unique<nxLogDeferredWriteThread>(*this, _cycles, _entriesQueue.GetCapacity());
    _cycles.Begin();
    nxPlatform::AsynchronousSignalsBlocked block;
    bool const isCreated = thread->Create().IsOK();
    if (!isCreated)
    {
        _cycles.End();
        thread.reset();
    }
    _writeThread = thread.release();
    _isWriterMissing.store(!isCreated, std::memory_order_relaxed);
}

void nxLogManager::_RestartWriter()
{
    nxMutexGuard guard(_threadMutex);
    if (_isWriterMissing.load(std::memory_order_relaxed))
        _StartWriter();
}

void nxLogManager::_StopWriter()
{
    _isWriterMissing.store(false, std::memory_order_relaxed);
    nxLogDeferredWriteThread* const thread = std::exchange(_writeThread, nullptr);
    if (thread == nullptr)
        return;
    // A device that ends the process runs this on the writer itself, which can't wait for its own end: the object then
    // stays, since the thread is still in it.
    if (thread->Stop().IsOK())
        delete thread;
    _cycles.End();
}

void nxLogManager::_Reserve(unsigned long long entries)
{
    _entriesQueue.Reserve(entries);
    nxLogSlots::Prepare(std::min(entries, nxLogEntriesQueue::mostReserved));
}

void nxLogManager::SetRecommendedBufferCapacity(unsigned long long entries)
{
    _Reserve(entries);
    nxMutexGuard guard(_threadMutex);
    if (_writeThread != nullptr)
        _writeThread->SetReserveEntries(entries);
}

void nxLogManager::WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper const& timeoutSeconds)
{
    _cycles.WaitForNext(timeoutSeconds);
}

void nxLogManager::_WaitForQueuedStatements()
{
    _cycles.WaitForQueued();
}

void nxLogManager::_DestroyAtExit()
{
    (void)GetInstance().Destroy();
    // A host may write to a file that it has not registered.
    if (nxFileLogDevice* const file = nxFileLogDevice::_GetExisting())
        (void)file->Destroy();
}

// Registered while the library is loaded, on one thread: a later moment could fall between another thread's fork and
// what it is to do before it. Handlers run in reverse order before a fork. The log holds its own locks when it asks for
// names, keys and the calendar, and devices may ask for more, so the handlers of those are made to be there first.
bool nxLogManager::_RegisterForkHandlers()
{
    (void)nxHeldAcrossForks::RegisterHandlers();
    nxPlatform::EnvironmentLock();
    (void)nxCmdLineArgs::GetInstance();
    (void)nxApplicationData::GetApplicationName();
    return pthread_atfork(_PrepareFork, _AfterForkInParent, _AfterForkInChild) == 0;
}

bool const nxLogManager::_forkHandlersRegistered = _RegisterForkHandlers();

void nxLogManager::_PrepareFork()
{
    nxLogBuildLock::Lock(nxLogBuildLock::manager);
    if (nxLogManager* const instance = _instance.load(std::memory_order_acquire))
        instance->_LockForFork();
    nxLogBuildLock::Lock(nxLogBuildLock::fileDevice);
    if (nxFileLogDevice* const file = nxFileLogDevice::_GetExisting())
        file->_LockBeforeFork();
    nxLogSlots::LockBeforeFork();
}

void nxLogManager::_AfterForkInParent()
{
    nxLogSlots::UnlockAfterFork();
    if (nxFileLogDevice* const file = nxFileLogDevice::_GetExisting())
        file->_UnlockInParent();
    nxLogBuildLock::Unlock(nxLogBuildLock::fileDevice);
    if (nxLogManager* const instance = _instance.load(std::memory_order_acquire))
        instance->_UnlockInParent();
    nxLogBuildLock::Unlock(nxLogBuildLock::manager);
}

void nxLogManager::_AfterForkInChild()
{
    nxLogSlots::UnlockAfterFork();
    if (nxFileLogDevice* const file = nxFileLogDevice::_GetExisting())
        file->_RemakeInChild();
    nxLogBuildLock::Unlock(nxLogBuildLock::fileDevice);
    if (nxLogManager* const instance = _instance.load(std::memory_order_acquire))
        instance->_RemakeInChild();
    nxLogBuildLock::Unlock(nxLogBuildLock::manager);
}

void nxLogManager::_LockForFork()
{
    // A device that forks has the devices mutex, and whoever has the thread mutex may be waiting for that device.
    if (ownPasses == 0)
        (void)_threadMutex.Lock();
    (void)_devicesMutex.Lock();
    // What a device holds back would be written twice, by the parent and by the child.
    if (ownPasses == 0)
        FlushDevices();
    _cycles.LockBeforeFork();
    (void)_entriesQueue._lock.Lock();
}

void nxLogManager::_UnlockInParent()
{
    (void)_entriesQueue._lock.Unlock();
    _cycles.UnlockInParent();
    (void)_devicesMutex.Unlock();
    if (ownPasses == 0)
        (void)_threadMutex.Unlock();
}

void nxLogManager::_RemakeInChild()
{
    (void)_entriesQueue._lock.Unlock();
    _cycles.RemakeInChild();
    // The recursive mutex knows its owner by a number that the child doesn't have.
    new (&_devicesMutex) nxMutex(true);
    new (&_threadMutex) nxMutex;
    _isBeingDestroyed = false;

    // The parent writes what was queued. Its writer's object stays as it is, since nobody knows what it was about.
    std::vector<nxLog*> logs;
    _entriesQueue.Swap(logs);
    nxLogSlots::Recycle(logs);
    if (_writeThread != nullptr)
    {
        _inheritedWriteThread = std::exchange(_writeThread, nullptr);
        _isWriterMissing.store(true, std::memory_order_relaxed);
    }
}
