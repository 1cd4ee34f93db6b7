#pragma once

#include "core/vocabulary/nxEnumWords.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

/// @file
/// The index beside the maps of the enumerations' registry; part of the library's inside.

/// Answers what the registry's maps hold faster than a search of a map: a number in three loads, a token by one hash
/// and one comparison. Fed by registration; it points into the maps, whose rows never move or go.
///
/// The library's own rows are found through tables that the compiler made; a host's rows, which come later and are
/// few, through tables made as they come.
///
/// Filled by one thread before others read it, like the maps. It owns memory that it never gives back, so that a
/// static instance can be used until the process ends.
class nxEnumIndex
{
public:
    using Descriptions = std::pair<std::string, std::string>;

    constexpr nxEnumIndex() = default;

    /// The one of the registry. Initialised before any code runs; what it points to is never freed.
    static nxEnumIndex ofRegistry;

    /// @return null when the number has no row here; numbers from nxEnumWords::numberLimit on are never here.
    Descriptions const* Find(unsigned int number) const
    {
        if (number >= nxEnumWords::numberLimit)
            return nullptr;
        Descriptions const* const own = _ownRows[nxEnumWords::numberTable.GetIndex(number)];
        return own != nullptr ? own : _FindOfHost(number);
    }

    /// What is no number.
    static constexpr std::uint64_t none = std::uint64_t{1} << 32;

    /// @return the number of the row that has the token, or `none`. A std::optional comes through memory here, written in
    ///         two parts and read as one, which takes longer than the search.
    std::uint64_t Find(std::string_view token) const
    {
        unsigned int const own = _knowsTokens ? nxEnumWords::Find(token) : nxEnumWords::numberLimit;
        if (own != nxEnumWords::numberLimit)
            return own;
        return _slots == nullptr ? none : _FindOfHost(token);
    }

    /// Notes a row of the library.
    /// @param descriptions  outlive the index
    void Add(nxEnumWords const& row, Descriptions const& descriptions)
    {
        _ownRows[row.GetIndex()] = &descriptions;
    }

    /// Makes the tokens of the library's rows known.
    void AddTokens()
    {
        _knowsTokens = true;
    }

    /// Notes a row of a host.
    /// @param descriptions  outlive the index; their first text is the token
    void Add(unsigned int number, Descriptions const& descriptions);

private:
    static constexpr unsigned int pageSize = nxEnumWords::blockSize;
    using Page = std::array<Descriptions const*, pageSize>;
    using Pages = std::array<Page*, nxEnumWords::numberLimit / pageSize>;

    struct Slot
    {
        std::uint64_t hash;
        Descriptions const* descriptions;
        unsigned int number;
    };

    Descriptions const* _FindOfHost(unsigned int number) const
    {
        if (_pages == nullptr)
            return nullptr;
        Page const* const page = (*_pages)[number / pageSize];
        return page == nullptr ? nullptr : (*page)[number % pageSize];
    }
    std::uint64_t _FindOfHost(std::string_view token) const;
    void _AddNumber(unsigned int number, Descriptions const& descriptions);
    void _AddToken(Slot const& slot);
    void _Grow();

    bool _knowsTokens = false;
    Descriptions const*
        _ownRows[nxEnumWords::count + 1]{}; ///< nothing in the first, the place of all that has no row
    Pages* _pages = nullptr;
    Slot* _slots = nullptr;    ///< open addressing, at most half full
    std::size_t _capacity = 0; ///< a power of two, once there are slots
    std::size_t _used = 0;
};
