#pragma once

#include "core/vocabulary/nxBitMask.h"

/// The prices and volumes that an observer of a product wants to see.
class NX_CORE_API nxPriceInterestBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxPriceInterestBitMask)
};
