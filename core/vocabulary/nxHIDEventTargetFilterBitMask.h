#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Where an event of an input device, such as a keypad, may go.
class NX_CORE_API nxHIDEventTargetFilterBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxHIDEventTargetFilterBitMask)
};
