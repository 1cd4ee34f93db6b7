// The log lines of this folder: their words, their levels, and who stays silent.
#include "core/concurrency/nxConditionRaw.h"
#include "core/concurrency/nxMutex.h"
#include "core/concurrency/nxSemaphore.h"
#include "core/concurrency/nxSpinLock.h"
#include "core/concurrency/nxThreadIndex.h"
#include "core/concurrency/nxThreadSpecificMemoryBuffer.h"
#include "tests/logging/nxRecordingLogDevice.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace
{
class nxConcurrencyLog : public nxRecordingTest
{
protected:
    nxConcurrencyLog()
    {
        Clear(); // what earlier tests have logged may still be on its way
    }
};

using Strings = std::vector<std::string>;
} // namespace

TEST_F(nxConcurrencyLog, SharingSaysNothingUnlessRobustOrRefused)
{
    nxMutex mutex;
    nxSpinLock spinLock;
    nxConditionRaw condition;
    nxSemaphore semaphore(0);
    EXPECT_TRUE(mutex.InitialiseAsShared(false).IsOK());
    EXPECT_TRUE(spinLock.InitialiseAsShared().IsOK());
    EXPECT_TRUE(condition.InitialiseAsShared().IsOK());
    EXPECT_TRUE(semaphore.InitialiseAsShared(1).IsOK());
    EXPECT_EQ(Messages(), Strings());

    EXPECT_TRUE(mutex.InitialiseAsShared(true).IsOK());
    EXPECT_EQ(semaphore.InitialiseAsShared(0xFFFFFFFF), NX_ERR_THR_UNSUPPORTED);
    EXPECT_EQ(Messages(), (Strings{"Set Robust attribute. result: 0",
                                   "Semaphore could not be created in shared memory. Result : -1"}));
    EXPECT_EQ(Levels(), (std::vector<unsigned int>{NX_INF, NX_ERR}));
}

TEST_F(nxConcurrencyLog, ABufferTellsItsThreadItsSizesAndItsAddress)
{
    nxThreadSpecificMemoryBuffer buffer(1024);
    std::string const index = std::to_string(nxThreadIndex::GetIndexOfCurrentThread());
    std::string const address = std::to_string(reinterpret_cast<std::uintptr_t>(buffer.GetBuffer()));
    buffer.GrowBuffer();
    buffer.GrowBufferToSize(100);
    EXPECT_EQ(Messages(), (Strings{"Allocated thread-specific memory buffer. Thread index: " + index +
                                       ", Size: 1024, Address: " + address,
                                   "Growing thread-specific memory buffer. Size: 1024 -> 2048",
                                   "Growing thread-specific memory buffer. Size: 2048 -> 100"}));
    EXPECT_EQ(Levels(), (std::vector<unsigned int>(3, NX_INF)));
}
