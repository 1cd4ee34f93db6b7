#pragma once

#include "core/vocabulary/nxEnum.h"

/// The part of an exchange's day that a product is in.
class NX_CORE_API nxTradingPeriodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTradingPeriodEnum, 1600, 1607)
};
