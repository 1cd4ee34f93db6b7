#pragma once

#include "core/vocabulary/nxBitMask.h"

/// Fix MD quote condition.
class NX_CORE_API nxFixMDQuoteConditionBitMask : public nxBitMask
{
    NX_MASK_CLASS(nxFixMDQuoteConditionBitMask)
};
