#pragma once

#include "core/vocabulary/nxBitMask.h"

/// How the transaction of an order is told to others.
class NX_CORE_API nxOrderTransactionBroadcastBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxOrderTransactionBroadcastBitMask)
};
