#pragma once

#include "core/vocabulary/nxEnum.h"

/// Synthetic strategy leg calculation price type.
class NX_CORE_API nxSyntheticStrategyLegCalculationPriceTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSyntheticStrategyLegCalculationPriceTypeEnum, 15700, 15703)
};
