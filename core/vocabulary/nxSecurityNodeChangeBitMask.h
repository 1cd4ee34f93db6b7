#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Security node change.
class NX_CORE_API nxSecurityNodeChangeBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxSecurityNodeChangeBitMask)
};
