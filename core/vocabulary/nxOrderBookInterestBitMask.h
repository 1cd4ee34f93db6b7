#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Order book interest.
class NX_CORE_API nxOrderBookInterestBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxOrderBookInterestBitMask)
};
