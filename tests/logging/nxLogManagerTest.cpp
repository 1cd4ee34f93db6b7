// How statements reach the devices in deferred mode: batches, waits and room. The fuzz target of the log's calls holds
// who is listed, what each device sees, and devices that log or leave while they write.

#include "core/logging/nxLogSite.h"
#include "tests/logging/nxRecordingLogDevice.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace
{

using Strings = std::vector<std::string>;

class nxLogManagerDeferred : public nxRecordingTest
{
};

TEST_F(nxLogManagerDeferred, EachDeviceSeesTheBatchBeforeTheNextAndIsFlushedOnce)
{
    nxRecordingLogDevice second;
    Strings order;
    _device.onWrite = [&order](std::string const& message) { order.push_back("first " + message); };
    second.onWrite = [&order](std::string const& message) { order.push_back("second " + message); };
    second.onFlush = [&order] { order.push_back("flush"); };

    nxLogManager& manager = nxLogManager::GetInstance();
    nxLog a(NX_INF, "file", 1);
    nxLog b(NX_INF, "file", 2);
    a << "a";
    b << "b";
    manager.RegisterLogDevice(&second);
    manager.ImmediateWrite({&a, &b});
    manager.FlushDevices();
    manager.UnregisterLogDevice(&second);
    EXPECT_EQ(order, (Strings{"first a", "first b", "second a", "second b", "flush"}));
}

TEST_F(nxLogManagerDeferred, WriteMovesTheTextAndTestsTheLevelAgain)
{
    nxLog debug(NX_DBG, "file", 1);
    debug << "below" << nxLog::nxLogTerminator();
    EXPECT_NE(debug.GetLogEntry(), nullptr);

    nxLog log(NX_INF, "file", 1);
    log << "text" << nxLog::nxLogTerminator();
    EXPECT_EQ(log.GetLogEntry(), nullptr);
    log.Flush(); // a second end writes a line without a message
    EXPECT_EQ(Messages(), (Strings{"text", "(none)"}));

    // One that isn't ended prints nothing.
    {
        nxLog unended(NX_INF, "file", 1);
        unended << "unended";
    }
    EXPECT_EQ(Messages().size(), 2u);
}

TEST_F(nxLogManagerDeferred, AWaitIsBoundedByItsTime)
{
    using Clock = std::chrono::steady_clock;
    nxLogManager& manager = nxLogManager::GetInstance();
    // Null and no change wait for the cycle, and so does a time that no deadline could hold.
    for (double const seconds :
         {0.0, -1.0, 1e-9, nxDoubleValueWrapper::nullValue, nxDoubleValueWrapper::noChangeValue, 1e300})
    {
        auto const start = Clock::now();
        manager.WaitForWriteThreadToWriteQueueToDisk(nxDoubleValueWrapper(seconds));
        auto const longest = std::chrono::milliseconds(seconds < 1.0 ? 90 : 5000);
        EXPECT_LT(Clock::now() - start, longest) << seconds;
    }
}

TEST_F(nxLogManagerDeferred, AReservationIsCutAndNeverLowered)
{
    nxLogEntriesQueue queue;
    queue.Reserve(50000);
    EXPECT_EQ(queue.GetCapacity(), 20000u);
    queue.Reserve(10);
    EXPECT_EQ(queue.GetCapacity(), 20000u);

    std::vector<nxLog*> logs;
    for (int i = 0; i < 30000; ++i)
    {
        nxLog log(NX_INF, "file", 1);
        log << i;
        queue.Push(log);
    }
    EXPECT_GE(queue.GetCapacity(), 30000u);
    queue.Swap(logs);
    ASSERT_EQ(logs.size(), 30000u);
    for (std::size_t i = 0; i < logs.size(); ++i)
    {
        ASSERT_EQ(*logs[i]->GetLogEntry(), std::to_string(i));
        delete logs[i];
    }
    EXPECT_EQ(queue.GetCapacity(), 0u); // the storage went with the swap
}

} // namespace
