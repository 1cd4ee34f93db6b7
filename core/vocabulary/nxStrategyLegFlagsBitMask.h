#pragma once

#include "core/vocabulary/nxBitMask.h"

/// What is done with the price of a leg's secondary product.
class NX_CORE_API nxStrategyLegFlagsBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxStrategyLegFlagsBitMask)
};
