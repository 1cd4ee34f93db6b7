#pragma once

#include "core/vocabulary/nxEnum.h"

/// What the end of the trading day does with orders.
class NX_CORE_API nxOrderEndOfDayTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxOrderEndOfDayTypeEnum, 15500, 15503)
};
