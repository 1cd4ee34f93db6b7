#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Which way a displayed attribute has been moving.
class NX_CORE_API nxAttributeTrendBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxAttributeTrendBitMask)
};
