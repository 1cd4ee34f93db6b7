#include "core/vocabulary/nxGenericBitMask.h"

#include "core/vocabulary/nxGenericBitMask64.h"

#include <bit>

namespace
{
template <typename Number>
std::string BinaryDigits(Number value)
{
    std::string digits;
    for (int index = static_cast<int>(std::bit_width(value)) - 1; index >= 0; --index)
        digits += (value >> index & 1) != 0 ? '1' : '0';
    return digits;
}

template <typename Number>
std::string BinaryAndDecimal(Number value)
{
    return BinaryDigits(value) + " ( " + std::to_string(value) + " )";
}
} // namespace

void nxGenericBitMask::SetBits(nxBitMask const& other)
{
    _value |= other.GetValue();
}

void nxGenericBitMask::SetBits(unsigned int bits)
{
    _value |= bits;
}

std::string nxGenericBitMask::GetClassNameA() const
{
    return "nxGenericBitMask";
}

std::string nxGenericBitMask::GetShortDescription() const
{
    return BinaryDigits(_value);
}

std::string nxGenericBitMask::GetLongDescription() const
{
    return BinaryAndDecimal(_value);
}

void nxGenericBitMask64::SetBits(nxBitMask64 const& other)
{
    _value |= other.GetValue();
}

void nxGenericBitMask64::SetBits(unsigned long long const& bits)
{
    _value |= bits;
}

std::string nxGenericBitMask64::GetShortDescription(std::string const&) const
{
    return BinaryDigits(_value);
}

std::string nxGenericBitMask64::GetLongDescription(std::string const&) const
{
    return BinaryAndDecimal(_value);
}

std::string nxGenericBitMask64::GetClassNameA() const
{
    return "nxGenericBitMask64";
}
