#pragma once

#include "core/vocabulary/nxBitMask.h"

/// What a user may do with a node of accounts or users: nothing, read, write or both.
class NX_CORE_API nxSecurityNodeAccessBaseBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxSecurityNodeAccessBaseBitMask)

    /// True when no bit but those of reading and writing is set; adding bits to any other mask starts from 0.
    bool IsValid() const override;
};
