#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Conditional order flags.
class NX_CORE_API nxConditionalOrderFlagsBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxConditionalOrderFlagsBitMask)
};
