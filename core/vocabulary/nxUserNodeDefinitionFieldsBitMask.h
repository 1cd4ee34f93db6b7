#pragma once

#include "core/vocabulary/nxBitMask64.h"

/// User node definition fields.
class NX_CORE_API nxUserNodeDefinitionFieldsBitMask : public nxBitMask64
{
    NX_MASK64_CLASS(nxUserNodeDefinitionFieldsBitMask)
};
