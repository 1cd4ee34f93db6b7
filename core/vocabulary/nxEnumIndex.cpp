#include "core/vocabulary/nxEnumIndex.h"

#include "core/vocabulary/nxTokenHash.h"

#include <span>

namespace
{
constexpr std::size_t firstNumberOfSlots = 64;
} // namespace

std::uint64_t nxEnumIndex::_FindOfHost(std::string_view token) const
{
    std::uint64_t const hash = nxTokenHash(token);
    std::size_t const mask = _capacity - 1;
    for (std::size_t at = hash & mask; _slots[at].descriptions != nullptr; at = (at + 1) & mask)
    {
        Slot const& slot = _slots[at];
        if (slot.hash == hash && slot.descriptions->first == token)
            return slot.number;
    }
    return none;
}

void nxEnumIndex::Add(unsigned int number, Descriptions const& descriptions)
{
    if (number < nxEnumWords::numberLimit)
        _AddNumber(number, descriptions);
    if (2 * (_used + 1) > _capacity)
        _Grow();
    ++_used;
    _AddToken({nxTokenHash(descriptions.first), &descriptions, number});
}

void nxEnumIndex::_AddNumber(unsigned int number, Descriptions const& descriptions)
{
    if (_pages == nullptr)
        _pages = new Pages{};
    Page*& page = (*_pages)[number / pageSize];
    if (page == nullptr)
        page = new Page{};
    (*page)[number % pageSize] = &descriptions;
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
