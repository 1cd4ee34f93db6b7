#pragma once

#include "core/vocabulary/nxEnum.h"

/// Profit and loss calculation price type.
class NX_CORE_API nxProfitAndLossCalculationPriceTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxProfitAndLossCalculationPriceTypeEnum, 8400, 8410)
};
