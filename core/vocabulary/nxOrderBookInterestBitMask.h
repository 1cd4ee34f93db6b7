#pragma once

#include "core/vocabulary/nxBitMask.h"

/// What an observer of the order book wants to hear of: confirmed orders, the early stages of each
/// transaction, its errors.
class NX_CORE_API nxOrderBookInterestBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxOrderBookInterestBitMask)
};
