#pragma once

#include "core/vocabulary/nxBitMask64.h"

/// Server capability.
class NX_CORE_API nxServerCapabilityBitMask : public nxBitMask64
{
    NX_MASK64_CLASS(nxServerCapabilityBitMask)
};
