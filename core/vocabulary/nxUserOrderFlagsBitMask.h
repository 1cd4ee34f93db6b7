#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Thirty flags of an order whose meaning belongs to the users of the system; the library gives them none.
///
/// The operators take numbers by reference, unlike those of other masks, so it has a set of its own.
class NX_CORE_API nxUserOrderFlagsBitMask : public nxBitMask
{
    NX_MASK_ROWS(nxUserOrderFlagsBitMask)

    nxUserOrderFlagsBitMask() = default;
    nxUserOrderFlagsBitMask(unsigned int value) : nxBitMask(value)
    {
    }
    nxUserOrderFlagsBitMask(nxUserOrderFlagsBitMask const& other) = default;

    nxUserOrderFlagsBitMask& operator=(nxUserOrderFlagsBitMask const& other) = default;
    nxUserOrderFlagsBitMask& operator=(nxBitMask const& other)
    {
        SetValue(other.GetValue());
        return *this;
    }
    nxUserOrderFlagsBitMask& operator=(unsigned int const& value)
    {
        SetValue(value);
        return *this;
    }

    nxUserOrderFlagsBitMask& operator|=(nxBitMask const& other)
    {
        SetBits(other);
        return *this;
    }
    nxUserOrderFlagsBitMask& operator|=(unsigned int const& bits)
    {
        SetBits(bits);
        return *this;
    }

    bool operator==(unsigned int const& value) const
    {
        return _value == value;
    }
    bool operator!=(unsigned int const& value) const
    {
        return _value != value;
    }
};
