// What logs in this folder: sharing, and the buffers of threads, with their sizes, contents and counts of changes.
#include "core/concurrency/nxConditionRaw.h"
#include "core/concurrency/nxMutex.h"
#include "core/concurrency/nxSemaphore.h"
#include "core/concurrency/nxSpinLock.h"
#include "core/concurrency/nxThreadIndex.h"
#include "core/concurrency/nxThreadSpecificMemoryBuffer.h"
#include "tests/logging/nxRecordingLogDevice.h"

#include <algorithm>
#include <cstdint>

namespace
{
using nxConcurrencyLog = nxRecordingTest;
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
    EXPECT_TRUE(mutex.InitialiseAsShared(true).IsOK());
    EXPECT_EQ(semaphore.InitialiseAsShared(0xFFFFFFFF), NX_ERR_THR_UNSUPPORTED);
    EXPECT_EQ(Take(), (Lines{"INF Set Robust attribute. result: 0",
                             "ERR Semaphore could not be created in shared memory. Result : -1"}));
}

TEST_F(nxConcurrencyLog, ABufferGrowsByItsInitialSizeOrToAnySizeAndKeepsWhatItHolds)
{
    constexpr unsigned int byStep = 1;        // in place of a size that is asked for
    constexpr unsigned int huge = 0xFFFFFFF8; // the system may refuse it, and it stands all the same
    using Steps = std::vector<std::pair<unsigned int, unsigned int>>;
    for (auto const& [initialSize, steps] :
         {std::pair<unsigned int, Steps>(1024, {{byStep, 2048}, {byStep, 3072}, {100, 100}, {100, 100}}),
          {0, {{byStep, 0}}},
          {16, {{0, 0}, {0, 0}, {byStep, 16}, {0, 0}, {huge, huge}, {byStep, 8}}}})
    {
        nxThreadSpecificMemoryBuffer buffer(initialSize);
        Lines lines = {"INF Allocated thread-specific memory buffer. Thread index: " +
                       std::to_string(nxThreadIndex::GetIndexOfCurrentThread()) +
                       ", Size: " + std::to_string(initialSize) +
                       ", Address: " + std::to_string(reinterpret_cast<std::uintptr_t>(buffer.GetBuffer()))};
        unsigned int grown = 0;
        for (auto const& [asked, size] : steps)
        {
            unsigned int const oldSize = buffer.GetSize();
            unsigned int const kept = oldSize != huge && size != huge ? std::min(oldSize, size) : 0;
            std::fill_n(static_cast<char*>(buffer.GetBuffer()), kept, 'x');
            asked == byStep ? buffer.GrowBuffer() : buffer.GrowBufferToSize(asked);
            lines.push_back("INF Growing thread-specific memory buffer. Size: " + std::to_string(oldSize) +
                            " -> " + std::to_string(size));
            EXPECT_EQ(buffer.GetSize(), size);
            EXPECT_EQ(buffer.GetGrowCount(), ++grown);
            EXPECT_TRUE(size == huge || (buffer.GetBuffer() == nullptr) == (size == 0));
            EXPECT_EQ(std::string(static_cast<char*>(buffer.GetBuffer()), kept), std::string(kept, 'x'));
        }
        EXPECT_EQ(Take(), lines);
    }
}
