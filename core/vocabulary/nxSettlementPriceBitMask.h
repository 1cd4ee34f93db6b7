#pragma once

#include "core/vocabulary/nxBitMask.h"

/// What kind of settlement price it is; several can hold at once.
class NX_CORE_API nxSettlementPriceBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxSettlementPriceBitMask)
};
