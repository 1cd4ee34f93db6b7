#pragma once

#include "core/vocabulary/nxBitMask64.h"

/// The fields that a partial definition of a user carries.
class NX_CORE_API nxUserNodeDefinitionFieldsBitMask : public nxBitMask64
{
    NX_MASK64_CLASS(nxUserNodeDefinitionFieldsBitMask)
};
