#pragma once

#include "core/platform/nxExport.h"
#include "core/vocabulary/nxBitMaskRow.h"
#include "core/vocabulary/nxEnumRow.h"

#include <span>
#include <string_view>

/// @file
/// Every class of the vocabulary with its rows, for programs that list or search it.

/// The vocabulary as data: what there is, in the order of registration.
///
/// The texts and rows are those from which the registry was filled; they are constants of the library and valid
/// for ever. Whoever only wants the words of a value asks the value. Nothing here throws or allocates, and any
/// thread may call at any time, even before registration.
class NX_CORE_API nxVocabularyCatalogue
{
public:
    struct Enumeration
    {
        char const* className;
        unsigned int
            lowerBound; ///< exclusive, as the upper one; may lie above it, and then no number is inside
        unsigned int upperBound;
        std::span<nxEnumRow const> rows;

        /// True for a number inside the bounds, whether or not it has a row.
        bool Owns(unsigned int number) const
        {
            return number > lowerBound && number < upperBound;
        }
    };

    struct BitMask
    {
        char const* className;
        unsigned int width; ///< 32 or 64
        std::span<nxBitMaskRow const> rows;
    };

    static std::span<Enumeration const> GetEnumerations();
    static std::span<BitMask const> GetBitMasks();

    /// @return null when there is no such class
    static Enumeration const* FindEnumeration(std::string_view className);
    static BitMask const* FindBitMask(std::string_view className);

    /// The class that has a row of this number, or else the one inside whose bounds it lies. The class that can hold
    /// numbers of any other is never meant.
    /// @return null for a number of no class, such as those that are common to all
    static Enumeration const* FindOwner(unsigned int number);
};
