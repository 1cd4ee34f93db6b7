#pragma once

#include "core/vocabulary/nxEnum.h"

/// Open average price rounding method.
class NX_CORE_API nxOpenAveragePriceRoundingMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOpenAveragePriceRoundingMethodEnum, 12100, 12103)
};
