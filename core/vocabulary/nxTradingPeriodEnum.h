#pragma once

#include "core/vocabulary/nxEnum.h"

/// Trading period.
class NX_CORE_API nxTradingPeriodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTradingPeriodEnum, 1600, 1607)
};
