#include "core/vocabulary/nxEnumIndex.h"

#include <cstring>
#include <span>

namespace
{
constexpr std::size_t firstNumberOfSlots = 4096;

// A step of a multiplicative hash: an odd constant with its bits well spread (2^64 divided by the golden ratio).
constexpr std::uint64_t multiplier = 0x9e3779b97f4a7c15;

std::uint64_t Load(char const* from, std::size_t size)
{
    std::uint64_t word = 0;
    std::memcpy(&word, from, size);
    return word;
}

std::uint64_t Mix(std::uint64_t hash, std::uint64_t word)
{
    hash = (hash ^ word) * multiplier;
    return hash ^ hash >> 32;
}

std::uint32_t Hash(std::string_view text)
{
    constexpr std::size_t wordSize = sizeof(std::uint64_t);
    char const* at = text.data();
    std::size_t left = text.size();
    std::uint64_t hash = left;
    for (; left > wordSize; at += wordSize, left -= wordSize)
        hash = Mix(hash, Load(at, wordSize));
    // The last word overlaps the one before it, which spares a loop over single bytes.
    if (text.size() >= wordSize)
        hash = Mix(hash, Load(text.data() + text.size() - wordSize, wordSize));
    else
        hash = Mix(hash, Load(at, left));
    return static_cast<std::uint32_t>(hash);
}
} // namespace

bool nxEnumIndex::Find(std::string_view token, unsigned int& number) const
{
    if (_slots == nullptr)
        return false;
    std::uint32_t const hash = Hash(token);
    std::size_t const mask = _capacity - 1;
    for (std::size_t at = hash & mask; _slots[at].descriptions != nullptr; at = (at + 1) & mask)
    {
        Slot const& slot = _slots[at];
        if (slot.hash == hash && slot.descriptions->first == token)
        {
            number = slot.number;
            return true;
        }
    }
    return false;
}

void nxEnumIndex::Add(unsigned int number, Descriptions const& descriptions)
{
    if (number < numberLimit)
    {
        Page*& page = _pages[number / pageSize];
        if (page == nullptr)
            page = new Page{};
        (*page)[number % pageSize] = &descriptions;
    }
    if (2 * (_used + 1) > _capacity)
        _Grow();
    ++_used;
    _AddToken({Hash(descriptions.first), number, &descriptions});
}

void nxEnumIndex::_AddToken(Slot const& slot)
{
    std::size_t const mask = _capacity - 1;
    std::size_t at = slot.hash & mask;
    while (_slots[at].descriptions != nullptr)
        at = (at + 1) & mask;
    _slots[at] = slot;
}

void nxEnumIndex::_Grow()
{
    std::span<Slot const> const old(_slots, _capacity);
    _capacity = old.empty() ? firstNumberOfSlots : 2 * old.size();
    _slots = new Slot[_capacity]();
    for (Slot const& slot : old)
        if (slot.descriptions != nullptr)
            _AddToken(slot);
    delete[] old.data();
}
