#pragma once

#include "core/vocabulary/nxEnum.h"

/// The price at which a position is valued.
class NX_CORE_API nxProfitAndLossCalculationPriceTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxProfitAndLossCalculationPriceTypeEnum, 8400, 8410)
};
