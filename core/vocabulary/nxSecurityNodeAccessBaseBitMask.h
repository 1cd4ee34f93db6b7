#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Security node access.
class NX_CORE_API nxSecurityNodeAccessBaseBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxSecurityNodeAccessBaseBitMask)
};
