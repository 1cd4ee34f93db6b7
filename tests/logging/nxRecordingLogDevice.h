#pragma once

#include "core/logging/nxConsoleLogDevice.h"
#include "core/logging/nxLog.h"
#include "core/logging/nxLogDevice.h"
#include "core/logging/nxLogManager.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

/// Keeps what it is given: by the writer, or by one thread after the other.
class nxRecordingLogDevice : public nxLogDevice
{
public:
    nxErrorEnum Destroy() override
    {
        return nxErrorEnum();
    }

    void Write(nxLog const& log) override
    {
        messages.push_back(log.GetLogEntry() != nullptr ? *log.GetLogEntry() : "(none)");
        levels.push_back(log.GetLogLevel().GetValue());
        onWrite(messages.back());
    }

    void Flush() override
    {
        onFlush();
    }

    std::function<void(std::string)> onWrite = [](std::string const&) {};
    std::function<void()> onFlush = [] {};
    std::vector<std::string> messages;
    std::vector<unsigned int> levels;
};

/// A test with a recording device in place of the console.
class nxRecordingTest : public testing::Test
{
protected:
    using Lines = std::vector<std::string>;

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

    Lines const& Messages()
    {
        Drain();
        return _device.messages;
    }

    std::vector<unsigned int> const& Levels()
    {
        Drain();
        return _device.levels;
    }

    /// @return what was logged since the last call, each message behind its level: "INF message".
    Lines Take()
    {
        Drain();
        Lines lines = std::exchange(_device.messages, {});
        for (std::size_t i = 0; i < lines.size(); ++i)
            lines[i].insert(0, nxLogLevelEnum(nxEnumValue(_device.levels[i])).GetShortDescription() + " ");
        _device.levels.clear();
        return lines;
    }

    nxRecordingLogDevice _device;
};
