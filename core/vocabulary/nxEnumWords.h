#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

/// @file
/// The rows of the enumerations as the registry takes them; part of the library's inside.

/// One row, and all of them.
///
/// A row has no pointer in it, so that loading the library relocates nothing for it: its words lie in one text of all
/// rows, and it says where. All of it, and the tables by which a row is found, is made by the compiler, which sees to
/// it that no number and no token occurs twice and that no token is too long.
struct nxEnumWords
{
    std::uint32_t number;
    std::uint32_t enumerator; ///< where it begins; token and text follow
    std::uint8_t tokenOffset; ///< from the enumerator, of which the token may be the end
    std::uint8_t tokenLength;
    std::uint16_t textLength;

    /// Its end is marked by a zero byte, as those of the other two are.
    char const* GetEnumerator() const;
    std::string_view GetToken() const;
    std::string_view GetText() const;

    /// One more than the place of this row among all of them.
    std::size_t GetIndex() const;

    /// The rows that all classes have in common.
    static std::span<nxEnumWords const> OfAllClasses();

    /// The rows of the class that comes at this place in the order of registration.
    static std::span<nxEnumWords const> OfClass(std::size_t place);

    /// The numbers of all rows in the ascending order of their tokens.
    static std::span<std::uint32_t const> NumbersByToken();

    /// @return the number of the row that has the token, or numberLimit
    static unsigned int Find(std::string_view token);

    /// A longer token is not registered.
    static constexpr std::size_t maxTokenLength = 64;

    /// How many rows there are, those of all classes among them, and one number that none of them reaches.
    static constexpr std::size_t countOfCommon = 3;
    static constexpr std::size_t count = countOfCommon
#define NX_ENUM_BEGIN(Class)
#define NX_ROW(number, token, text) +1
#define NX_WORD(number, token, text) +1
#define NX_TEXT(number, enumerator, token, text) +1
#define NX_ENUM_END(Class)
#include "core/vocabulary/tables/enumerations.def"
        ;
    static constexpr std::uint32_t numberLimit = 1u << 21;

    /// Where the row of a number is found: in the page of the number's block, the row's index, 0 for a number without a
    /// row. Most blocks have no row and share the first page. Plain arrays, which an unoptimised build does not check
    /// either: the indices are right by construction.
    static constexpr std::uint32_t blockSize = 32;
    static constexpr std::size_t numberOfPages = 300;
    struct NumberTable
    {
        std::uint16_t pageOfBlock[numberLimit / blockSize];
        std::uint16_t pages[numberOfPages][blockSize];

        constexpr unsigned int GetIndex(std::uint32_t wanted) const
        {
            return pages[pageOfBlock[wanted / blockSize]][wanted % blockSize];
        }
    };
    static NumberTable const numberTable;
};
