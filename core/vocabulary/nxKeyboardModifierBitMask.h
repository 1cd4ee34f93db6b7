#pragma once

#include "core/vocabulary/nxBitMask.h"

/// The modifier keys that are held down while a user clicks or types.
class NX_CORE_API nxKeyboardModifierBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxKeyboardModifierBitMask)

    bool IsShiftKeyDown() const;
    bool IsCtrlKeyDown() const;
    bool IsAltKeyDown() const;
};
