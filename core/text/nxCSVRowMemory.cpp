#include "core/text/nxCSVRowMemory.h"

#include "core/platform/nxMemory.h"

#include <atomic>
#include <new>

/// The head of a stretch of memory that blocks are cut from, one behind the other.
class nxCSVRowMemory::Region
{
public:
    static constexpr std::size_t size = 1024 * 1024;

    static Region* Create()
    {
        void* const memory = ::operator new(size);
        nxPlatform::ProvidePages(memory, size);
        return ::new (memory) Region;
    }

    // Taken by the batch itself and by each block.
    void Hold()
    {
        (void)_holders.fetch_add(1, std::memory_order_relaxed);
    }

    void Release()
    {
        if (_holders.fetch_sub(1, std::memory_order_acq_rel) == 1)
        {
            this->~Region();
            ::operator delete(this);
        }
    }

private:
    std::atomic<std::size_t> _holders = 1;
};

namespace
{

// Stands in front of each block; null for one from the heap.
using Origin = nxCSVRowMemory::Region*;

thread_local nxCSVRowMemory::Batch* currentBatch = nullptr;

void* MakeBlock(void* memory, Origin origin)
{
    return ::new (memory) Origin(origin) + 1;
}

} // namespace

void* nxCSVRowMemory::Allocate(std::size_t size)
{
    std::size_t const sizeWithOrigin = sizeof(Origin) + size;
    if (currentBatch != nullptr && sizeWithOrigin <= Region::size - sizeof(Region))
        return currentBatch->_Take(sizeWithOrigin);
    return MakeBlock(::operator new(sizeWithOrigin), nullptr);
}

void nxCSVRowMemory::Free(void* memory) noexcept
{
    Origin* const origin = static_cast<Origin*>(memory) - 1;
    if (*origin != nullptr)
        (*origin)->Release();
    else
        ::operator delete(origin);
}

nxCSVRowMemory::Batch::Batch(bool isWanted) : _outer(currentBatch), _isWanted(isWanted)
{
    if (_isWanted)
        currentBatch = this;
}

nxCSVRowMemory::Batch::~Batch()
{
    if (_isWanted)
        currentBatch = _outer;
    if (_region != nullptr)
        _region->Release();
}

void* nxCSVRowMemory::Batch::_Take(std::size_t size)
{
    if (_region == nullptr || size > Region::size - _used)
    {
        Region* const next = Region::Create();
        if (_region != nullptr)
            _region->Release();
        _region = next;
        _used = sizeof(Region);
    }
    void* const memory = reinterpret_cast<char*>(_region) + _used;
    constexpr std::size_t alignment = alignof(Origin);
    _used += (size + alignment - 1) / alignment * alignment;
    _region->Hold();
    return MakeBlock(memory, _region);
}
