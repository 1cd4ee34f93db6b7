#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Order transaction flags.
class NX_CORE_API nxOrderTransactionFlagsBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxOrderTransactionFlagsBitMask)
};
