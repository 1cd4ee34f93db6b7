#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Flags of one transaction of an order.
class NX_CORE_API nxOrderTransactionFlagsBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxOrderTransactionFlagsBitMask)

    /// A mask that stands for "no change".
    static nxOrderTransactionFlagsBitMask GetNoChangeInstance();
};
