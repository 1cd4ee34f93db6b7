#pragma once

#include <cstddef>

/// @file
/// Powers of ten. For the library's own sources and for the inline part of its headers.

namespace nxPowersOfTen
{

/// By the exponent, 0 to 255. A plain array, whose index nothing checks: callers' are right by construction.
template <class NumberT>
struct Table
{
    NumberT powers[256];

    constexpr NumberT operator[](std::size_t exponent) const
    {
        return powers[exponent];
    }
};

template <class NumberT>
constexpr Table<NumberT> Make()
{
    Table<NumberT> table{};
    unsigned long long power = 1;
    for (NumberT& entry : table.powers)
    {
        entry = static_cast<NumberT>(power);
        power *= 10; // wraps from 10^20 on, and is 0 from 10^64 on
    }
    return table;
}

/// In 64 bits, unsigned: 10^19 is the largest that fits, those beyond wrap.
inline constexpr Table<unsigned long long> asInteger = Make<unsigned long long>();

/// Those same numbers as doubles, exact as far as 10^19.
inline constexpr Table<double> asDouble = Make<double>();

} // namespace nxPowersOfTen
