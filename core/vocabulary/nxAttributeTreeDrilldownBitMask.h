#pragma once

#include "core/vocabulary/nxBitMask.h"

/// How a cell of a tree grid takes part in expanding and collapsing.
class NX_CORE_API nxAttributeTreeDrilldownBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxAttributeTreeDrilldownBitMask)
};
