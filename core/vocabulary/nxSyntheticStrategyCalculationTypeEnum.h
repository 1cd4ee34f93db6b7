#pragma once

#include "core/vocabulary/nxEnum.h"

/// How the price of a synthetic strategy is calculated from those of its legs.
class NX_CORE_API nxSyntheticStrategyCalculationTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSyntheticStrategyCalculationTypeEnum, 8800, 8807)
    NX_ENUM_LESS(nxSyntheticStrategyCalculationTypeEnum)
};
