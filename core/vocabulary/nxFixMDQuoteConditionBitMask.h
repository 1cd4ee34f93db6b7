#pragma once

#include "core/vocabulary/nxBitMask.h"

/// The conditions of a quote in market data by FIX; a token has the code of the protocol in brackets. Tokens
/// and texts of the first two rows are crossed, and stay so.
class NX_CORE_API nxFixMDQuoteConditionBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxFixMDQuoteConditionBitMask)
};
