#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Product type GUI display.
class NX_CORE_API nxProductTypeGUIDisplayBaseBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxProductTypeGUIDisplayBaseBitMask)
};
