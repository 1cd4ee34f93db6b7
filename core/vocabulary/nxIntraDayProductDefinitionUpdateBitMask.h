#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Intra day product definition update.
class NX_CORE_API nxIntraDayProductDefinitionUpdateBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxIntraDayProductDefinitionUpdateBitMask)
};
