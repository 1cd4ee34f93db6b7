#pragma once

#include "core/vocabulary/nxBitMask64.h"

/// What a server tells its clients that it can do.
class NX_CORE_API nxServerCapabilityBitMask : public nxBitMask64
{
    NX_MASK64_CLASS(nxServerCapabilityBitMask)
};
