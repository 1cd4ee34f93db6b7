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
        _Add("destroy");
        return nxErrorEnum();
    }

    void Write(nxLog const& log) override
    {
        std::string const message = log.GetLogEntry() != nullptr ? *log.GetLogEntry() : "(none)";
        {
            nxMutexGuard guard(_mutex);
            _messages.push_back(message);
            _levels.push_back(log.GetLogLevel().GetValue());
            _calls.push_back(message);
        }
        if (onWrite)
        {
            onWrite(message);
        }
    }

    void Flush() override
    {
        _Add("flush");
    }

    std::vector<std::string> Messages()
    {
        return _Copy(_messages);
    }

    std::vector<unsigned int> Levels()
    {
        return _Copy(_levels);
    }

    /// Messages, flushes and the end, in order.
    std::vector<std::string> Calls()
    {
        return _Copy(_calls);
    }

    void Clear()
    {
        nxMutexGuard guard(_mutex);
        _messages.clear();
        _levels.clear();
        _calls.clear();
    }

    std::function<void(std::string const&)> onWrite;

private:
    void _Add(std::string const& call)
    {
        nxMutexGuard guard(_mutex);
        _calls.push_back(call);
    }

    template <typename Values>
    Values _Copy(Values const& values)
    {
        nxMutexGuard guard(_mutex);
        return values;
    }

    nxMutex _mutex;
    std::vector<std::string> _messages;
    std::vector<unsigned int> _levels;
    std::vector<std::string> _calls;
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
