#pragma once

#include "core/vocabulary/nxEnum.h"

/// A truth value that can also be undefined or stand for "no change".
///
/// There is no conversion back to `bool`: compare with NX_TRUE or NX_FALSE. A new instance is neither.
class NX_CORE_API nxBoolEnum : public nxEnum
{
    NX_ENUM_CLASS(nxBoolEnum, 5000, 5003)

    nxBoolEnum(bool value) : nxBoolEnum(value ? NX_TRUE : NX_FALSE)
    {
    }

    nxBoolEnum& operator=(bool value)
    {
        return *this = value ? NX_TRUE : NX_FALSE;
    }

    /// Compares with the row of the truth value; without this it would be compared as the number 0 or 1.
    template <std::same_as<bool> Bool>
    bool operator==(Bool value) const
    {
        return *this == (value ? NX_TRUE : NX_FALSE);
    }
};
