#pragma once

#include "core/vocabulary/nxBasicBitMask.h"

/// @file
/// The base of the 32-bit masks and the recipe of a concrete class.

class NX_CORE_API nxBitMask;
extern template class nxBasicBitMask<nxBitMask, unsigned int, unsigned int>;

/// A set of flags in 32 bits; bit 31 is the state "null", bit 30 "no change".
class NX_CORE_API nxBitMask : public nxBasicBitMask<nxBitMask, unsigned int, unsigned int>
{
public:
    using nxBasicBitMask::operator=;
    nxBitMask& operator=(nxBitMask const& other) = default;

protected:
    nxBitMask() = default;
    nxBitMask(unsigned int value) : nxBasicBitMask(value)
    {
    }
    nxBitMask(nxBitMask const& other) = default;
};

/// Declares a concrete 32-bit mask.
#define NX_MASK_CLASS(Class)                                                                                 \
public:                                                                                                      \
    Class() = default;                                                                                       \
    Class(unsigned int value) : nxBitMask(value)                                                             \
    {                                                                                                        \
    }                                                                                                        \
    NX_MASK_COMMON(Class, nxBitMask)
