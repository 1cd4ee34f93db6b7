#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Fix MD trade condition.
class NX_CORE_API nxFixMDTradeConditionBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxFixMDTradeConditionBitMask)
};
