#pragma once

#include "core/vocabulary/nxEnum.h"

/// How the average price of an open position is rounded.
class NX_CORE_API nxOpenAveragePriceRoundingMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOpenAveragePriceRoundingMethodEnum, 12100, 12103)
};
