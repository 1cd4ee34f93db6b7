#pragma once

#include "core/vocabulary/nxEnum.h"

/// Whether a leg of a synthetic spread is worked in the market.
class NX_CORE_API nxSpreadLegWorkingOrderChoiceEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSpreadLegWorkingOrderChoiceEnum, 15600, 15603)
};
