#pragma once

#include "core/vocabulary/nxBitMask64.h"

/// Properties of a product.
class NX_CORE_API nxProductFlagBitMask : public nxBitMask64
{
    NX_MASK64_CLASS(nxProductFlagBitMask)
};
