// Sizes, contents and the count of changes of a thread's buffer.
#include "core/concurrency/nxThreadSpecificMemoryBuffer.h"

#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

static_assert(!std::is_copy_constructible_v<nxThreadSpecificMemoryBuffer>);
static_assert(!std::is_default_constructible_v<nxThreadSpecificMemoryBuffer>);
static_assert(!std::is_polymorphic_v<nxThreadSpecificMemoryBuffer>);

namespace
{
bool Begins(nxThreadSpecificMemoryBuffer& buffer, char const* text)
{
    return std::memcmp(buffer.GetBuffer(), text, std::strlen(text)) == 0;
}
} // namespace

TEST(nxThreadSpecificMemoryBuffer, GrowsByItsInitialSizeAndKeepsWhatItHolds)
{
    nxThreadSpecificMemoryBuffer buffer(1024);
    ASSERT_NE(buffer.GetBuffer(), nullptr);
    std::memset(buffer.GetBuffer(), 'x', buffer.GetSize());
    std::memcpy(buffer.GetBuffer(), "kept", 4);
    for (unsigned int grown : {1u, 2u})
    {
        buffer.GrowBuffer();
        EXPECT_EQ(buffer.GetSize(), 1024 * (grown + 1));
        EXPECT_EQ(buffer.GetGrowCount(), grown);
        EXPECT_TRUE(Begins(buffer, "kept"));
        std::memset(static_cast<char*>(buffer.GetBuffer()) + 4, 'y',
                    buffer.GetSize() - 4); // all of it is there
    }
    buffer.GrowBufferToSize(100);
    EXPECT_EQ(buffer.GetSize(), 100u);
    EXPECT_EQ(buffer.GetGrowCount(), 3u);
    EXPECT_TRUE(Begins(buffer, "keptyyy"));
    buffer.GrowBufferToSize(100);
    EXPECT_EQ(buffer.GetGrowCount(), 4u);
    EXPECT_TRUE(Begins(buffer, "keptyyy"));
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
