#pragma once

#include "core/vocabulary/nxBitMask.h"

/// A raw bag of 32 bits of which nothing is known: it has no rows, and adding bits never clears any.
class NX_CORE_API nxGenericBitMask : public nxBitMask
{
public:
    nxGenericBitMask() = default;
    nxGenericBitMask(unsigned int value) : nxBitMask(value)
    {
    }
    nxGenericBitMask(nxGenericBitMask const& other) = default;
    nxGenericBitMask& operator=(nxGenericBitMask const& other) = default;
    using nxBitMask::operator=;

    /// Adds the bits to whatever is there, reserved ones included.
    void SetBits(nxBitMask const& other) override;
    void SetBits(unsigned int bits) override;

    // The forms with a separator stay and know of no rows.
    using nxBitMask::GetLongDescription;
    using nxBitMask::GetShortDescription;

    std::string GetClassNameA() const override;

    /// The binary digits, the highest first, without leading zeros; nothing for 0.
    virtual std::string GetShortDescription() const;

    /// The binary digits and the decimal value: "101 ( 5 )".
    virtual std::string GetLongDescription() const;
};
