#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

/// @file
/// The hash by which tokens are found; part of the library's inside.

namespace nxTokenHashDetail
{
/// Bytes as a number, the first byte lowest: the compiler's tables hold on a machine of either byte order.
template <typename Word>
constexpr std::uint64_t Load(char const* from)
{
    Word word = 0;
    if (std::is_constant_evaluated() || std::endian::native != std::endian::little)
        for (std::size_t index = 0; index < sizeof(Word); ++index)
            word |= static_cast<Word>(Word{static_cast<unsigned char>(from[index])} << 8 * index);
    else
        std::memcpy(&word, from, sizeof(Word));
    return word;
}

constexpr std::uint64_t Spread(std::uint64_t word)
{
    // An odd constant with its bits well spread: 2^64 divided by the golden ratio.
    word *= 0x9e3779b97f4a7c15;
    return word ^ word >> 32;
}
} // namespace nxTokenHashDetail

/// Depends on the size and, in a long text, on the last sixteen bytes and on eight in its middle, which tell the
/// platform's tokens apart: they begin alike. Works at compile time too.
constexpr std::uint64_t nxTokenHash(std::string_view text)
{
    using namespace nxTokenHashDetail;
    constexpr std::size_t wordSize = sizeof(std::uint64_t);
    std::size_t const size = text.size();
    char const* const begin = text.data();
    std::uint64_t hash = size;
    if (size >= wordSize)
    {
        // The words overlap in a short text, which spares branches on the size.
        std::size_t const last = size - wordSize;
        hash += Load<std::uint64_t>(begin + last);
        hash = Spread(hash) ^ Load<std::uint64_t>(begin + (last < wordSize ? 0 : last - wordSize));
        return Spread(Spread(hash) ^ Load<std::uint64_t>(begin + last / 2));
    }
    if (size >= wordSize / 2)
        return Spread(Spread(hash ^ Load<std::uint32_t>(begin) << 32) ^
                      Load<std::uint32_t>(begin + size - wordSize / 2));
    for (char const character : text)
        hash = Spread(hash ^ static_cast<std::uint64_t>(static_cast<unsigned char>(character)) << 32);
    return Spread(hash);
}
