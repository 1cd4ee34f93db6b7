#pragma once

#include "core/vocabulary/nxEnum.h"

/// Synthetic leg calculation type.
class NX_CORE_API nxSyntheticLegCalculationTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSyntheticLegCalculationTypeEnum, 9700, 8804)
};
