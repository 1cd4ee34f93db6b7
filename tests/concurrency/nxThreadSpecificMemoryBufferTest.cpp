// Sizes, contents and the count of changes of a thread's buffer.
#include "core/concurrency/nxThreadSpecificMemoryBuffer.h"

#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

static_assert(!std::is_copy_constructible_v<nxThreadSpecificMemoryBuffer>);
static_assert(!std::is_default_constructible_v<nxThreadSpecificMemoryBuffer>);
static_assert(!std::is_polymorphic_v<nxThreadSpecificMemoryBuffer>);

TEST(nxThreadSpecificMemoryBuffer, GrowsByItsInitialSizeAndKeepsWhatItHolds)
{
    nxThreadSpecificMemoryBuffer buffer(1024);
    std::memset(buffer.GetBuffer(), 'x', buffer.GetSize());
    std::memcpy(buffer.GetBuffer(), "kept", 4);
    unsigned int grown = 0;
    for (unsigned int size : {2048u, 3072u, 100u, 100u}) // the last two are asked for
    {
        grown < 2 ? buffer.GrowBuffer() : buffer.GrowBufferToSize(size);
        EXPECT_EQ(buffer.GetSize(), size);
        EXPECT_EQ(buffer.GetGrowCount(), ++grown);
        EXPECT_EQ(std::memcmp(buffer.GetBuffer(), "kept", 4), 0);
        std::memset(static_cast<char*>(buffer.GetBuffer()) + 4, 'y', size - 4); // all of it is there
    }
}

TEST(nxThreadSpecificMemoryBuffer, ASizeOfZeroIsANullBufferThatCanGrowAgainAndSizesWrapAround)
{
    nxThreadSpecificMemoryBuffer empty(0);
    empty.GrowBuffer();
    EXPECT_EQ(empty.GetSize(), 0u);
    EXPECT_EQ(empty.GetGrowCount(), 1u);

    nxThreadSpecificMemoryBuffer buffer(16);
    buffer.GrowBufferToSize(0);
    EXPECT_EQ(buffer.GetBuffer(), nullptr);
    buffer.GrowBufferToSize(0);
    buffer.GrowBuffer();
    EXPECT_EQ(buffer.GetSize(), 16u);
    std::memset(buffer.GetBuffer(), 'x', buffer.GetSize());
    EXPECT_EQ(buffer.GetGrowCount(), 3u);
    buffer.GrowBufferToSize(0);
    buffer.GrowBufferToSize(0xFFFFFFF8); // the system may refuse that much, and the size stands all the same
    EXPECT_EQ(buffer.GetSize(), 0xFFFFFFF8u);
    buffer.GrowBuffer();
    EXPECT_EQ(buffer.GetSize(), 8u);
}
