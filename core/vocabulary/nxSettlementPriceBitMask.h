#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Settlement price.
class NX_CORE_API nxSettlementPriceBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxSettlementPriceBitMask)
};
