#pragma once

#include "core/vocabulary/nxBitMask.h"

/// The levels of a product tree at which nodes can be selected.
class NX_CORE_API nxProductTreeSelectableNodeBaseBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxProductTreeSelectableNodeBaseBitMask)
};
