#pragma once

#include "core/vocabulary/nxBitMask.h"

/// What of a product's definition may change during the day.
class NX_CORE_API nxIntraDayProductDefinitionUpdateBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxIntraDayProductDefinitionUpdateBitMask)
};
