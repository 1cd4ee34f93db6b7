#pragma once

#include "core/vocabulary/nxEnum.h"

/// Spread leg working order choice.
class NX_CORE_API nxSpreadLegWorkingOrderChoiceEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSpreadLegWorkingOrderChoiceEnum, 15600, 15603)
};
