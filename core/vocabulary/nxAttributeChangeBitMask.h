#pragma once

#include "core/vocabulary/nxBitMask.h"

/// How a displayed attribute changed, and whether the grid flashes it.
class NX_CORE_API nxAttributeChangeBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxAttributeChangeBitMask)
};
