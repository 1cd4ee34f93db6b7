#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Product tree selectable node.
class NX_CORE_API nxProductTreeSelectableNodeBaseBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxProductTreeSelectableNodeBaseBitMask)
};
