#pragma once

#include "core/vocabulary/nxAttributeHighlightBitMask.h"
#include "core/vocabulary/nxExtendedAttributeHighlightBitMask.h"

#include <string>

/// Both kinds of highlights of a screen attribute, 128 bits in all.
class NX_CORE_API nxAttributeHighlightAndExtendedHightBitMaskPair
{
public:
    nxAttributeHighlightAndExtendedHightBitMaskPair() = default;
    nxAttributeHighlightAndExtendedHightBitMaskPair(nxAttributeHighlightBitMask const& highlights,
                                                    nxExtendedAttributeHighlightBitMask const& extended)
        : _highlights(highlights), _extendedHighlights(extended)
    {
    }
    nxAttributeHighlightAndExtendedHightBitMaskPair(nxAttributeHighlightAndExtendedHightBitMaskPair const&) = default;
    nxAttributeHighlightAndExtendedHightBitMaskPair&
    operator=(nxAttributeHighlightAndExtendedHightBitMaskPair const&) = default;

    bool operator==(nxAttributeHighlightAndExtendedHightBitMaskPair const& other) const
    {
        return _highlights == other._highlights && _extendedHighlights == other._extendedHighlights;
    }
    bool operator!=(nxAttributeHighlightAndExtendedHightBitMaskPair const& other) const
    {
        return !(*this == other);
    }

    nxAttributeHighlightBitMask const& GetHighlights() const
    {
        return _highlights;
    }

    nxExtendedAttributeHighlightBitMask const& GetExtendedHighlights() const
    {
        return _extendedHighlights;
    }

    /// Adds bits to the highlights.
    void SetBits(unsigned long long const& bits)
    {
        _highlights.SetBits(bits);
    }

    /// The extended highlights, as the operations of these names on the mask itself.
    void SetExtendedBits(unsigned long long const& bits)
    {
        _extendedHighlights.SetBits(bits);
    }
    void ClearExtendedBits(unsigned long long const& bits)
    {
        _extendedHighlights.ClearBits(bits);
    }
    bool AreAllExtendedBitsSet(unsigned long long const& bits) const
    {
        return _extendedHighlights.AreAllBitsSet(bits);
    }
    bool AreAnyExtendedBitsSet(unsigned long long const& bits) const
    {
        return _extendedHighlights.AreAnyBitsSet(bits);
    }

    /// Empties both.
    void Clear()
    {
        _highlights.Clear();
        _extendedHighlights.Clear();
    }

    virtual std::string GetClassNameA() const;

private:
    nxAttributeHighlightBitMask _highlights;
    nxExtendedAttributeHighlightBitMask _extendedHighlights;
};
