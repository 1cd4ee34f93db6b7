#pragma once

#include "core/vocabulary/nxBitMask.h"

/// The fields of a summary of an order's fills.
class NX_CORE_API nxOrderFillSummaryFieldBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxOrderFillSummaryFieldBitMask)
};
