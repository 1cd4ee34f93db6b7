#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Product state.
class NX_CORE_API nxProductStateBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxProductStateBitMask)
};
