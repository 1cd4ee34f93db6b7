#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Attribute change.
class NX_CORE_API nxAttributeChangeBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxAttributeChangeBitMask)
};
