#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Keyboard modifier.
class NX_CORE_API nxKeyboardModifierBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxKeyboardModifierBitMask)
};
