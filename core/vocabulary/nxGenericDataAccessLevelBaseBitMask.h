#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Generic data access level.
class NX_CORE_API nxGenericDataAccessLevelBaseBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxGenericDataAccessLevelBaseBitMask)
};
