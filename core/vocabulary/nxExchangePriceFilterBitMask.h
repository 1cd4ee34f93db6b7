#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Exchange price filter.
class NX_CORE_API nxExchangePriceFilterBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxExchangePriceFilterBitMask)
};
