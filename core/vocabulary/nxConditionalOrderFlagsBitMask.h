#pragma once

#include "core/vocabulary/nxBitMask.h"

/// How a conditional order treats the orders that it sends.
class NX_CORE_API nxConditionalOrderFlagsBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxConditionalOrderFlagsBitMask)
};
