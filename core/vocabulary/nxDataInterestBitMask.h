#pragma once

#include "core/vocabulary/nxBitMask.h"

/// The series of data, such as ticks by the minute, in which an interest is announced.
class NX_CORE_API nxDataInterestBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxDataInterestBitMask)
};
