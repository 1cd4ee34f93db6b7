#pragma once

#include "core/vocabulary/nxEnum.h"

/// Synthetic strategy calculation type.
class NX_CORE_API nxSyntheticStrategyCalculationTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSyntheticStrategyCalculationTypeEnum, 8800, 8807)
    NX_ENUM_LESS(nxSyntheticStrategyCalculationTypeEnum)
};
