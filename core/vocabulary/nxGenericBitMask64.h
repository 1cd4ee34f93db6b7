#pragma once

#include "core/vocabulary/nxBitMask64.h"

/// A raw bag of 64 bits of which nothing is known: it has no rows, and adding bits never clears any.
///
/// Unlike nxGenericBitMask it prints through the forms with a separator, which is ignored.
class NX_CORE_API nxGenericBitMask64 : public nxBitMask64
{
public:
    nxGenericBitMask64() = default;
    nxGenericBitMask64(unsigned long long const& value) : nxBitMask64(value)
    {
    }
    nxGenericBitMask64(nxGenericBitMask64 const& other) = default;
    nxGenericBitMask64& operator=(nxGenericBitMask64 const& other) = default;
    using nxBitMask64::operator=;

    /// Adds the bits to whatever is there, reserved ones included.
    void SetBits(nxBitMask64 const& other) override;
    void SetBits(unsigned long long const& bits) override;

    /// The binary digits, the highest first, without leading zeros; nothing for 0.
    std::string GetShortDescription(std::string const& separator) const override;

    /// The binary digits and the decimal value: "101 ( 5 )".
    std::string GetLongDescription(std::string const& separator) const override;

    std::string GetClassNameA() const override;
};
