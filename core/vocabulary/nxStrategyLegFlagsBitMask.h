#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Strategy leg flags.
class NX_CORE_API nxStrategyLegFlagsBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxStrategyLegFlagsBitMask)
};
