#pragma once

#include "core/vocabulary/nxBitMask.h"

/// What changed on a node of accounts or users. A mask without bits says nothing specific, and prints as
/// nothing.
class NX_CORE_API nxSecurityNodeChangeBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxSecurityNodeChangeBitMask)
};
