#pragma once

#include "core/vocabulary/nxBitMask.h"

/// The types of product that a screen shows.
class NX_CORE_API nxProductTypeGUIDisplayBaseBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxProductTypeGUIDisplayBaseBitMask)
};
