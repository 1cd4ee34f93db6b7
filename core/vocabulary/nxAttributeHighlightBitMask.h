#pragma once

#include "core/platform/nxExport.h"

/// The highlights of a screen attribute: 64 bits without reserved states, outside the registry of the masks.
class NX_CORE_API nxAttributeHighlightBitMask
{
public:
    nxAttributeHighlightBitMask(unsigned long long const& value = 0) : _value(value)
    {
    }

    unsigned long long GetValue() const
    {
        return _value;
    }

    void SetValue(unsigned long long const& value)
    {
        _value = value;
    }

    void SetBits(unsigned long long const& bits)
    {
        _value |= bits;
    }

    void ClearBits(unsigned long long const& bits)
    {
        _value &= ~bits;
    }

    void Clear()
    {
        _value = 0;
    }

    /// True when every bit of the argument is set, so for 0 too.
    bool AreAllBitsSet(unsigned long long const& bits) const
    {
        return (_value & bits) == bits;
    }

    /// True when some bit of the argument is set.
    bool AreAnyBitsSet(unsigned long long const& bits) const
    {
        return (_value & bits) != 0;
    }

    nxAttributeHighlightBitMask& operator|=(unsigned long long const& bits)
    {
        SetBits(bits);
        return *this;
    }

    bool operator==(unsigned long long const& value) const
    {
        return _value == value;
    }
    bool operator==(nxAttributeHighlightBitMask const& other) const
    {
        return _value == other._value;
    }
    bool operator!=(unsigned long long const& value) const
    {
        return _value != value;
    }
    bool operator!=(nxAttributeHighlightBitMask const& other) const
    {
        return _value != other._value;
    }

private:
    unsigned long long _value;
};
