#pragma once

#include "core/vocabulary/nxEnumValue.h"

#include <cstddef>

/// @file
/// Tables that say of each row of a class what follows from it, for the sources of the vocabulary.
///
/// Such a table is an array whose elements have a member `row`, the enumerator. It holds every number of a block
/// without a gap, in ascending order, so that a row is found by its number.

namespace nxTraits
{
/// True when the table runs from the first to the last row without a gap; to be asserted while compiling.
template <typename Traits, std::size_t count>
constexpr bool CoversRows(Traits const (&table)[count], nxEnumValue first, nxEnumValue last)
{
    for (std::size_t index = 0; index < count; ++index)
        if (table[index].row != first + index)
            return false;
    return first + count == last + std::size_t{1};
}

/// The line of the table for a number, or what holds for all other numbers.
template <typename Traits, std::size_t count>
constexpr Traits const& Of(unsigned int value, Traits const (&table)[count], Traits const& otherwise)
{
    // Unsigned: a number below the first row wraps round and lies past the last.
    unsigned int const index = value - table[0].row;
    return index < count ? table[index] : otherwise;
}
} // namespace nxTraits
