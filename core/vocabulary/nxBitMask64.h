#pragma once

#include "core/vocabulary/nxBasicBitMask.h"

/// @file
/// The base of the 64-bit masks and the recipe of a concrete class.

class NX_CORE_API nxBitMask64;
extern template class nxBasicBitMask<nxBitMask64, unsigned long long, unsigned long long const&>;

/// A set of flags in 64 bits; bit 63 is the state "null", bit 62 "no change".
class NX_CORE_API nxBitMask64
    : public nxBasicBitMask<nxBitMask64, unsigned long long, unsigned long long const&>
{
public:
    using nxBasicBitMask::operator=;
    nxBitMask64& operator=(nxBitMask64 const& other) = default;

protected:
    nxBitMask64() = default;
    nxBitMask64(unsigned long long const& value) : nxBasicBitMask(value)
    {
    }
    nxBitMask64(nxBitMask64 const& other) = default;
};

/// Declares a concrete 64-bit mask.
#define NX_MASK64_CLASS(Class)                                                                               \
public:                                                                                                      \
    Class() = default;                                                                                       \
    Class(unsigned long long const& value) : nxBitMask64(value)                                              \
    {                                                                                                        \
    }                                                                                                        \
    NX_MASK_COMMON(Class, nxBitMask64)
