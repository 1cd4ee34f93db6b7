#pragma once

#include "core/logging/nxConsoleLogDevice.h"
#include "core/logging/nxLog.h"
#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogManager.h"

#include <gtest/gtest.h>

#include <functional>
#include <mutex>
#include <string>
#include <vector>

/// Keeps what it is given.
class nxRecordingLogDevice : public nxLogDevice
{
public:
    nxErrorEnum Destroy() override
    {
        return nxErrorEnum();
    }

    void Write(nxLog const& log) override
    {
        std::string const message = log.GetLogEntry() != nullptr ? *log.GetLogEntry() : "(none)";
        std::unique_lock guard(mutex);
        messages.push_back(message);
        levels.push_back(log.GetLogLevel().GetValue());
        guard.unlock();
        if (onWrite)
            onWrite(message);
    }

    void Flush() override
    {
        if (onFlush)
            onFlush();
    }

    std::function<void(std::string const&)> onWrite;
    std::function<void()> onFlush;

    std::mutex mutex; // of these:
    std::vector<std::string> messages;
    std::vector<unsigned int> levels;
};

/// A test with a recording device in place of the console.
class nxRecordingTest : public testing::Test
{
protected:
    nxRecordingTest()
    {
        nxLogManager::GetInstance().UnregisterLogDevice(&nxConsoleLogDevice::GetInstance());
        Drain(); // what earlier tests have logged may still be on its way
        nxLogManager::GetInstance().RegisterLogDevice(&_device);
    }

    ~nxRecordingTest() override
    {
        nxLogManager::GetInstance().UnregisterLogDevice(&_device);
    }

    /// Lets the writer finish what was logged so far: the cycle that runs, and the one after it.
    static void Drain()
    {
        for (int cycle = 0; cycle < 2; ++cycle)
            nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(10.0));
    }

    std::vector<std::string> Messages()
    {
        Drain();
        std::lock_guard const guard(_device.mutex);
        return _device.messages;
    }

    std::vector<unsigned int> Levels()
    {
        Drain();
        std::lock_guard const guard(_device.mutex);
        return _device.levels;
    }

    void Clear()
    {
        Drain();
        std::lock_guard const guard(_device.mutex);
        _device.messages.clear();
        _device.levels.clear();
    }

    nxRecordingLogDevice _device;
};
