#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Order transaction broadcast.
class NX_CORE_API nxOrderTransactionBroadcastBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxOrderTransactionBroadcastBitMask)
};
