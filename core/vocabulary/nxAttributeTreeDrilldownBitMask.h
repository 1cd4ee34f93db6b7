#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Attribute tree drilldown.
class NX_CORE_API nxAttributeTreeDrilldownBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxAttributeTreeDrilldownBitMask)
};
