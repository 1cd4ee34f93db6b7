#pragma once

#include "core/concurrency/nxMutex.h"
#include "core/concurrency/nxMutexGuard.h"
#include "core/logging/nxLog.h"
#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogManager.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

/// Keeps what it is given. Any thread may look at it.
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
        {
            nxMutexGuard guard(_mutex);
            _messages.push_back(message);
            _levels.push_back(log.GetLogLevel().GetValue());
        }
        if (onWrite)
        {
            onWrite(message);
        }
    }

    void Flush() override
    {
        if (onFlush)
        {
            onFlush();
        }
    }

    std::vector<std::string> Messages()
    {
        return _Copy(_messages);
    }

    std::vector<unsigned int> Levels()
    {
        return _Copy(_levels);
    }

    void Clear()
    {
        nxMutexGuard guard(_mutex);
        _messages.clear();
        _levels.clear();
    }

    std::function<void(std::string const&)> onWrite;
    std::function<void()> onFlush;

private:
    template <typename Values>
    Values _Copy(Values const& values)
    {
        nxMutexGuard guard(_mutex);
        return values;
    }

    nxMutex _mutex;
    std::vector<std::string> _messages;
    std::vector<unsigned int> _levels;
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
        constexpr double longest = 10;
        nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(longest));
        nxLogManager::GetInstance().WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(longest));
    }

    std::vector<std::string> Messages()
    {
        Drain();
        return _device.Messages();
    }

    std::vector<unsigned int> Levels()
    {
        Drain();
        return _device.Levels();
    }

    void Clear()
    {
        Drain();
        _device.Clear();
    }

    nxRecordingLogDevice _device;
};
