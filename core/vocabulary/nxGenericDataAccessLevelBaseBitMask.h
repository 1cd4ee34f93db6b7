#pragma once

#include "core/vocabulary/nxBitMask.h"

/// What a user may do with data: read, write, execute.
class NX_CORE_API nxGenericDataAccessLevelBaseBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxGenericDataAccessLevelBaseBitMask)
};
