#pragma once

#include "core/platform/nxSockets.h"

#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <new>

/// @file
/// Which sockets the process has been given and has not closed yet.

namespace nxPlatform
{
/// Tells a live handle from one whose descriptor's number has gone to somebody else since.
///
/// For each descriptor there is a count of how often it was given out and closed: odd while it is open. A
/// handle carries the count's half, so the first one of each number is the descriptor itself. Counts lie in
/// groups that double in size and are made when first needed; they are never moved nor freed. No operation
/// has a lock, and a child of fork() goes on with its copy.
class SocketHandles
{
public:
    /// Memory for the descriptor's count, so that Open() can't fail afterwards.
    bool Reserve(int descriptor)
    {
        unsigned int const group = _GroupOf(static_cast<unsigned int>(descriptor));
        if (group == 0 || _groups[group - 1].load(std::memory_order_acquire))
            return true;
        Count* const counts = new (std::nothrow) Count[std::size_t{firstGroupSize} << (group - 1)]();
        Count* expected = nullptr;
        if (counts &&
            !_groups[group - 1].compare_exchange_strong(expected, counts, std::memory_order_acq_rel))
            delete[] counts; // another thread was faster
        return counts != nullptr;
    }

    SOCKET Open(int descriptor)
    {
        auto const number = static_cast<unsigned int>(descriptor);
        Count& count = *_Find(number);
        std::uint32_t const last = count.load(std::memory_order_relaxed);
        // The count is odd when somebody closed the descriptor behind the layer's back.
        std::uint32_t const opened = (last | 1) + (last & 1) * 2;
        count.store(opened, std::memory_order_relaxed);
        return SOCKET{opened / 2} << generationShift | number;
    }

    /// -1, which no system call accepts, for a handle that is not a live one.
    int GetDescriptor(SOCKET socket) const
    {
        if ((socket & neverSet) != 0)
            return -1;
        auto const descriptor = static_cast<unsigned int>(socket);
        Count const* const count = _Find(descriptor);
        bool const isLive = count && count->load(std::memory_order_relaxed) == _OpenCountOf(socket);
        return isLive ? static_cast<int>(descriptor) : -1;
    }

    /// Takes the handle's life. Of several threads that close one handle, one gets the descriptor; it still
    /// has to be closed, so nobody else can be given its number before.
    /// @return -1 for a handle that is not a live one.
    int Close(SOCKET socket)
    {
        int const descriptor = GetDescriptor(socket);
        if (descriptor == -1)
            return -1;
        std::uint32_t open = _OpenCountOf(socket);
        bool const isTaken = _Find(static_cast<unsigned int>(descriptor))
                                 ->compare_exchange_strong(open, open + 1, std::memory_order_relaxed);
        return isTaken ? descriptor : -1;
    }

private:
    using Count = std::atomic<std::uint32_t>;
    static_assert(Count::is_always_lock_free);

    static constexpr unsigned int generationShift = 32;
    static constexpr SOCKET neverSet = 0x8000000080000000; // sign of a descriptor; top of half a count
    static constexpr unsigned int firstGroupSize = 1024;
    static constexpr unsigned int groupCount = 22; // the last one ends at 2^31 - 1

    static constexpr unsigned int _GroupOf(unsigned int descriptor)
    {
        return static_cast<unsigned int>(std::bit_width(descriptor / firstGroupSize));
    }

    static constexpr std::uint32_t _OpenCountOf(SOCKET socket)
    {
        return static_cast<std::uint32_t>(socket >> generationShift) * 2 + 1;
    }

    Count const* _Find(unsigned int descriptor) const
    {
        unsigned int const group = _GroupOf(descriptor);
        if (group == 0)
            return &_firstGroup[descriptor];
        Count const* const counts = _groups[group - 1].load(std::memory_order_acquire);
        return counts ? &counts[descriptor - (firstGroupSize << (group - 1))] : nullptr;
    }

    Count* _Find(unsigned int descriptor)
    {
        return const_cast<Count*>(static_cast<SocketHandles const*>(this)->_Find(descriptor));
    }

    Count _firstGroup[firstGroupSize] = {};
    std::atomic<Count*> _groups[groupCount - 1] = {};
};
} // namespace nxPlatform
