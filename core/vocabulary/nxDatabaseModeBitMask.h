#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Database mode.
class NX_CORE_API nxDatabaseModeBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxDatabaseModeBitMask)
};
