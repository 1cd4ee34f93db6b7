#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

/// @file
/// The index beside the maps of the enumerations' registry; part of the library's inside.

/// Answers what the registry's maps hold faster than a search of a map: a number in two loads, a token by one hash and
/// one comparison. Fed by registration; it points into the maps, whose rows never move or go.
///
/// Filled by one thread before others read it, like the maps. It owns memory that it never gives back, so that a
/// static instance can be used until the process ends.
class nxEnumIndex
{
public:
    using Descriptions = std::pair<std::string, std::string>;

    constexpr nxEnumIndex() = default;

    /// @return null when the number has no row here; numbers from numberLimit on are never here.
    Descriptions const* Find(unsigned int number) const
    {
        if (number >= numberLimit)
            return nullptr;
        Page const* const page = _pages[number / pageSize];
        return page == nullptr ? nullptr : (*page)[number % pageSize];
    }

    /// @param number  receives the number of the row
    /// @return false, with the number as it was, when no row has the token
    bool Find(std::string_view token, unsigned int& number) const;

    /// @param descriptions  outlive the index; their first text is the token
    void Add(unsigned int number, Descriptions const& descriptions);

    /// All of the platform's own numbers lie below; a host's own rows may not.
    static constexpr unsigned int numberLimit = 1u << 21;

private:
    static constexpr unsigned int pageSize =
        32; // small: numbers come in short blocks, and untouched memory costs nothing
    using Page = std::array<Descriptions const*, pageSize>;

    struct Slot
    {
        std::uint32_t hash;
        unsigned int number;
        Descriptions const* descriptions;
    };

    void _AddToken(Slot const& slot);
    void _Grow();

    std::array<Page*, numberLimit / pageSize> _pages{};
    Slot* _slots = nullptr;    ///< open addressing, at most half full
    std::size_t _capacity = 0; ///< a power of two, once there are slots
    std::size_t _used = 0;
};
