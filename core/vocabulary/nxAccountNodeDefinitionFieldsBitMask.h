#pragma once

#include "core/vocabulary/nxBitMask64.h"

/// Account node definition fields.
class NX_CORE_API nxAccountNodeDefinitionFieldsBitMask : public nxBitMask64
{
    NX_MASK64_CLASS(nxAccountNodeDefinitionFieldsBitMask)
};
