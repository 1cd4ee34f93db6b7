#pragma once

#include "core/vocabulary/nxEnum.h"

/// The fields that make up a product identifier.
class NX_CORE_API nxProductIDFieldEnum : public nxEnum
{
    NX_ENUM_CLASS(nxProductIDFieldEnum, 500, 512)

    /// The field as an index that counts from 0.
    /// @return false, with `field` left alone, only when undefined. The value isn't looked at otherwise: "no
    ///         change" wraps around to 4294966797.
    bool GetFieldAsU32(unsigned int& field) const;
};
