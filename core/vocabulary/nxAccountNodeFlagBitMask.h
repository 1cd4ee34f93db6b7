#pragma once

#include "core/vocabulary/nxBitMask64.h"

/// Account node flag.
class NX_CORE_API nxAccountNodeFlagBitMask : public nxBitMask64
{
    NX_MASK64_CLASS(nxAccountNodeFlagBitMask)
};
