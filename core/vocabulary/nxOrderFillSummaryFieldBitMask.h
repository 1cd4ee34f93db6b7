#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Order fill summary field.
class NX_CORE_API nxOrderFillSummaryFieldBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxOrderFillSummaryFieldBitMask)
};
