#pragma once

#include "core/vocabulary/nxBitMask64.h"

/// The fields that a partial definition of an account carries. The text of the region's field reads "Account
/// margin", and stays so.
class NX_CORE_API nxAccountNodeDefinitionFieldsBitMask : public nxBitMask64
{
    NX_MASK64_CLASS(nxAccountNodeDefinitionFieldsBitMask)
};
