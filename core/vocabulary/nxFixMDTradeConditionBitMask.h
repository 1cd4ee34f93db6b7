#pragma once

#include "core/vocabulary/nxBitMask.h"

/// The conditions of a trade in market data by FIX; a token has the code of the protocol in brackets.
class NX_CORE_API nxFixMDTradeConditionBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxFixMDTradeConditionBitMask)
};
