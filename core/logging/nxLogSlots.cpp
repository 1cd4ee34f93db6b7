#include "core/logging/nxLogSlots.h"

#include "core/concurrency/nxSpinLock.h"
#include "core/logging/nxLogSlot.h"
#include "core/logging/nxLogSpinGuard.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

namespace
{

/// Asks for memory that another core has written last, to be changed here soon.
void Prefetch(void const* memory, std::size_t size)
{
    constexpr std::size_t cacheLine = 64;

    for (std::size_t offset = 0; offset < size; offset += cacheLine)
        __builtin_prefetch(static_cast<char const*>(memory) + offset, 1);
}

/// Empties the string; a text beyond the usual does not keep its memory.
void ClearText(std::string& text)
{
    constexpr std::size_t mostKept = 4096;

    text.clear();
    if (text.capacity() <= mostKept)
        return;
    text.shrink_to_fit();
    try
    {
        text.reserve(nxLogSlot::reservedText);
    }
    catch (std::bad_alloc const&)
    {
        // Its next user makes the room.
    }
}

} // namespace

/// A batch of free slots.
struct nxLogSlots::Chunk
{
    static constexpr unsigned int capacity = 62; // with the other members: eight cache lines

    bool IsFull() const
    {
        return count == capacity;
    }

    Chunk* next = nullptr;
    unsigned int count = 0;
    std::array<nxLogSlot*, capacity> slots;
};

/// The free slots that belong to no thread. Keeps as many as have been in use lately, so that a burst that is over
/// does not hold its memory for ever.
class nxLogSlots::Depot
{
public:
    /// Exchanges a chunk without slots, which may be null, for one with slots.
    /// @return null when there is none; `empty` then stays the caller's.
    Chunk* TakeChunk(Chunk* empty)
    {
        nxLogSpinGuard guard(_lock);
        if (_chunks == nullptr)
            return nullptr;
        Chunk* const chunk = _chunks;
        _chunks = chunk->next;
        --_count;
        if (empty != nullptr)
        {
            empty->next = _emptyChunks;
            _emptyChunks = empty;
        }
        return chunk;
    }

    void GiveChunk(Chunk* chunk)
    {
        nxLogSpinGuard guard(_lock);
        if (chunk->count == 0)
        {
            chunk->next = _emptyChunks;
            _emptyChunks = chunk;
            return;
        }
        chunk->next = _chunks;
        _chunks = chunk;
        ++_count;
    }

    /// @return null when there is none.
    Chunk* TakeEmptyChunk()
    {
        nxLogSpinGuard guard(_lock);
        Chunk* const chunk = _emptyChunks;
        if (chunk != nullptr)
            _emptyChunks = chunk->next;
        return chunk;
    }

    /// Makes chunks until there are so many, and keeps as many from then on.
    void Prepare(std::size_t chunks)
    {
        _KeepAtLeast(chunks);
        while (_GetCount() < chunks)
        {
            std::unique_ptr<Chunk, void (*)(Chunk*)> chunk(new Chunk, FreeChunk);
            for (nxLogSlot*& slot : chunk->slots)
            {
                slot = new nxLogSlot;
                ++chunk->count;
            }
            GiveChunk(chunk.release());
        }
    }

    /// Called once a cycle: notes how many statements the cycle wrote and frees a part of what is too much.
    void Trim(std::size_t written)
    {
        // Half of a burst is forgotten in 18 seconds of usual cycles, and no cycle is held up by more than so many
        // chunks.
        constexpr std::size_t forgetting = 256;
        constexpr unsigned int mostFreed = 64;

        _recentlyWritten = std::max(written, _recentlyWritten - _recentlyWritten / forgetting);
        for (unsigned int i = 0; i < mostFreed; ++i)
        {
            Chunk* const chunk = _TakeSurplus(_recentlyWritten / Chunk::capacity);
            if (chunk == nullptr)
                return;
            FreeChunk(chunk);
        }
    }

    static void FreeChunk(Chunk* chunk)
    {
        while (chunk->count != 0)
            delete chunk->slots[--chunk->count];
        delete chunk;
    }

    void Lock()
    {
        (void)_lock.Lock();
    }

    void Unlock()
    {
        (void)_lock.Unlock();
    }

private:
    Chunk* _TakeSurplus(std::size_t wanted)
    {
        nxLogSpinGuard guard(_lock);
        if (_count <= std::max(_leastKept, wanted))
            return nullptr;
        Chunk* const chunk = _chunks;
        _chunks = chunk->next;
        --_count;
        return chunk;
    }

    void _KeepAtLeast(std::size_t chunks)
    {
        nxLogSpinGuard guard(_lock);
        _leastKept = std::max(_leastKept, chunks);
    }

    std::size_t _GetCount()
    {
        nxLogSpinGuard guard(_lock);
        return _count;
    }

    nxSpinLock _lock;
    std::size_t _leastKept = 32; // some two thousand slots, about a megabyte
    Chunk* _chunks = nullptr;
    Chunk* _emptyChunks = nullptr;
    std::size_t _count = 0;
    std::size_t _recentlyWritten = 0; // the writer's alone
};

/// The slots that a thread works off: a chunk, and the chunk after it, which is there before the first one ends.
///
/// The writer touched all of them last, so each is asked for some statements before its own: first its object, then
/// the memory of its text, whose address is in the object.
class nxLogSlots::ThreadCache
{
public:
    ~ThreadCache()
    {
        for (Chunk* const chunk : {_chunk, _next})
            if (chunk != nullptr)
                _GetDepot().GiveChunk(chunk);
        _chunk = nullptr;
        _next = nullptr;
        _closed = true;
    }

    /// @return null when there is none.
    static nxLogSlot* Take()
    {
        if (!_HasSlots(_chunk) && !_GoOnToNext())
            return nullptr;
        nxLogSlot* const slot = _chunk->slots[--_chunk->count];
        if (_chunk->count == _chunkAhead)
            _FetchNext();
        _PrefetchAhead();
        return slot;
    }

    /// @return false when the thread keeps none any more, or memory is wanting: the slot then stays the caller's.
    static bool Return(nxLogSlot* slot)
    {
        if (_closed)
            return false;
        if (_chunk == nullptr || _chunk->IsFull())
        {
            Chunk* const empty = new (std::nothrow) Chunk;
            if (empty == nullptr)
                return false;
            if (_chunk != nullptr)
                _GetDepot().GiveChunk(_chunk);
            _ReturnAtThreadEnd();
            _chunk = empty;
        }
        _chunk->slots[_chunk->count++] = slot;
        return true;
    }

private:
    // How many statements before its own a slot's text, its object and its chunk are asked for.
    static constexpr unsigned int _textAhead = 3;
    static constexpr unsigned int _objectAhead = 6;
    static constexpr unsigned int _chunkAhead = 8;

    static bool _HasSlots(Chunk const* chunk)
    {
        return chunk != nullptr && chunk->count != 0;
    }

    static bool _GoOnToNext()
    {
        if (_closed)
            return false;
        _FetchNext();
        std::swap(_chunk, _next);
        return _HasSlots(_chunk);
    }

    static void _FetchNext()
    {
        if (_HasSlots(_next))
            return;
        Chunk* const filled = _GetDepot().TakeChunk(_next);
        if (filled == nullptr)
            return;
        _ReturnAtThreadEnd();
        _next = filled;
        Prefetch(_next, sizeof *_next);
    }

    /// @return null when the slot after so many others is not known yet.
    static nxLogSlot* _GetAhead(unsigned int statements)
    {
        Chunk const* chunk = _chunk;
        if (statements > chunk->count)
        {
            statements -= chunk->count;
            chunk = _next;
            if (chunk == nullptr || statements > chunk->count)
                return nullptr;
        }
        return chunk->slots[chunk->count - statements];
    }

    static void _PrefetchAhead()
    {
        constexpr std::size_t usualText = 128;

        if (nxLogSlot const* const slot = _GetAhead(_textAhead))
            Prefetch(slot->data(), usualText);
        if (nxLogSlot const* const slot = _GetAhead(_objectAhead))
            Prefetch(slot, sizeof *slot);
    }

    static void _ReturnAtThreadEnd()
    {
        static thread_local ThreadCache cache;
        (void)cache;
    }

    // Plain variables beside the object that closes them: they may be used before it exists and after it is gone,
    // as by a statement in the destructor of another thread-local object. Reached without a call, unlike the
    // usual thread-local of a shared library.
    static thread_local Chunk* _chunk __attribute__((tls_model("initial-exec")));
    static thread_local Chunk* _next __attribute__((tls_model("initial-exec")));
    static thread_local bool _closed __attribute__((tls_model("initial-exec")));
};

thread_local nxLogSlots::Chunk* nxLogSlots::ThreadCache::_chunk = nullptr;
thread_local nxLogSlots::Chunk* nxLogSlots::ThreadCache::_next = nullptr;
thread_local bool nxLogSlots::ThreadCache::_closed = false;

nxLogSlots::Depot& nxLogSlots::_GetDepot()
{
    static Depot* const depot = new Depot;
    return *depot;
}

nxLogSlot* nxLogSlots::_Take()
{
    nxLogSlot* const slot = ThreadCache::Take();
    return slot != nullptr ? slot : new nxLogSlot;
}

void nxLogSlots::_Return(nxLogSlot* slot)
{
    if (!ThreadCache::Return(slot))
        delete slot;
}

void nxLogSlots::_Drop(nxLogSlot& slot, unsigned char part)
{
    // The last holder alone may look without taking part in an exchange.
    unsigned char const held = slot._held.load(std::memory_order_acquire);
    if (held != part &&
        slot._held.fetch_and(static_cast<unsigned char>(~part), std::memory_order_acq_rel) != part)
        return;
    ClearText(slot);
    _Return(&slot);
}

std::string* nxLogSlots::TakeText()
{
    nxLogSlot* const slot = _Take();
    slot->_held.store(nxLogSlot::_textHeld, std::memory_order_relaxed);
    return slot;
}

void nxLogSlots::ReturnText(std::string* entry)
{
    _Drop(nxLogSlot::OfText(*entry), nxLogSlot::_textHeld);
}

void* nxLogSlots::TakeRoom(std::string* entry)
{
    if (entry != nullptr)
    {
        nxLogSlot& slot = nxLogSlot::OfText(*entry);
        if (slot._held.load(std::memory_order_acquire) == nxLogSlot::_textHeld)
        {
            slot._held.store(nxLogSlot::_textHeld | nxLogSlot::_statementHeld, std::memory_order_relaxed);
            return slot._room.bytes;
        }
    }
    nxLogSlot* const slot = _Take();
    slot->_held.store(nxLogSlot::_statementHeld, std::memory_order_relaxed);
    return slot->_room.bytes;
}

void nxLogSlots::ReturnRoom(void* room)
{
    _Drop(nxLogSlot::OfStatement(room), nxLogSlot::_statementHeld);
}

bool nxLogSlots::_ReturnWhole(nxLog* statement, Chunk*& chunk)
{
    nxLogSlot& slot = nxLogSlot::OfStatement(statement);
    if (statement->_entry != &slot)
        return false;
    if (chunk == nullptr)
    {
        chunk = _GetDepot().TakeEmptyChunk();
        if (chunk == nullptr)
            chunk = new (std::nothrow) Chunk;
        if (chunk == nullptr)
            return false;
    }
    statement->_entry = nullptr;
    statement->~nxLog();
    ClearText(slot);
    chunk->slots[chunk->count++] = &slot;
    return true;
}

void nxLogSlots::Recycle(std::vector<nxLog*>& statements)
{
    Chunk* chunk = nullptr;
    for (nxLog* const statement : statements)
    {
        if (!_ReturnWhole(statement, chunk))
        {
            delete statement;
        }
        else if (chunk->IsFull())
        {
            _GetDepot().GiveChunk(chunk);
            chunk = nullptr;
        }
    }
    if (chunk != nullptr)
        _GetDepot().GiveChunk(chunk);
    _GetDepot().Trim(statements.size());
    statements.clear();
}

void nxLogSlots::Prepare(unsigned long long statements)
{
    try
    {
        _GetDepot().Prepare((statements + Chunk::capacity - 1) / Chunk::capacity);
    }
    catch (std::bad_alloc const&)
    {
        // What could be made is there; the rest is made when it is needed.
    }
}

void nxLogSlots::LockBeforeFork()
{
    _GetDepot().Lock();
}

void nxLogSlots::UnlockAfterFork()
{
    _GetDepot().Unlock();
}
