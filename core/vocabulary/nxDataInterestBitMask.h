#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Data interest.
class NX_CORE_API nxDataInterestBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxDataInterestBitMask)
};
