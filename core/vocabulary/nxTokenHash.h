#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// @file
/// The hash by which tokens are found; part of the library's inside.

namespace nxTokenHashDetail
{
/// Bytes as a number, the first byte lowest: the compiler's tables hold on a machine of either byte order.
template <std::size_t Size>
constexpr std::uint64_t Load(char const* from)
{
    std::uint64_t word = 0;
    for (std::size_t index = 0; index < Size; ++index)
        word |= std::uint64_t{static_cast<unsigned char>(from[index])} << 8 * index;
    return word;
}

constexpr std::uint64_t Mix(std::uint64_t hash, std::uint64_t word)
{
    // An odd constant with its bits well spread: 2^64 divided by the golden ratio.
    hash = (hash ^ word) * 0x9e3779b97f4a7c15;
    return hash ^ hash >> 32;
}
} // namespace nxTokenHashDetail

/// Depends on every byte of the text. Works at compile time too.
constexpr std::uint64_t nxTokenHash(std::string_view text)
{
    using namespace nxTokenHashDetail;
    constexpr std::size_t wordSize = sizeof(std::uint64_t);
    std::size_t const size = text.size();
    char const* const begin = text.data();
    std::uint64_t hash = size;
    if (size >= wordSize)
    {
        // The last word overlaps the one before it, which spares a loop over single bytes.
        for (std::size_t at = 0; at + wordSize < size; at += wordSize)
            hash = Mix(hash, Load<wordSize>(begin + at));
        return Mix(hash, Load<wordSize>(begin + size - wordSize));
    }
    if (size >= wordSize / 2)
        return Mix(hash, Load<wordSize / 2>(begin) << 32 | Load<wordSize / 2>(begin + size - wordSize / 2));
    for (char const character : text)
        hash = Mix(hash, static_cast<unsigned char>(character));
    return hash;
}
