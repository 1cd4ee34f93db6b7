#pragma once

#include "core/vocabulary/nxBitMask.h"

/// HID event target filter.
class NX_CORE_API nxHIDEventTargetFilterBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxHIDEventTargetFilterBitMask)
};
