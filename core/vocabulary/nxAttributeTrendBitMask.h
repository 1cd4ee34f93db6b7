#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Attribute trend.
class NX_CORE_API nxAttributeTrendBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxAttributeTrendBitMask)
};
