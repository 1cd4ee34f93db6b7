#pragma once

#include "core/vocabulary/nxEnum.h"

/// Pand l data period.
class NX_CORE_API nxPandLDataPeriodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxPandLDataPeriodEnum, 15000, 15008)
};
