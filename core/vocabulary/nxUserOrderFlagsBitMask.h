#pragma once

#include "core/vocabulary/nxBitMask.h"

/// User order flags.
class NX_CORE_API nxUserOrderFlagsBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxUserOrderFlagsBitMask)
};
