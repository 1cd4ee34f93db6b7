#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Price interest.
class NX_CORE_API nxPriceInterestBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxPriceInterestBitMask)
};
