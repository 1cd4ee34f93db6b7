#pragma once

#include "core/vocabulary/nxEnum.h"

/// Tick data period.
class NX_CORE_API nxTickDataPeriodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTickDataPeriodEnum, 12300, 12319)
};
