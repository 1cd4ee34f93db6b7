#pragma once

#include "core/vocabulary/nxEnum.h"

/// By which method a yield is calculated.
class NX_CORE_API nxYieldCalculationTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxYieldCalculationTypeEnum, 10000, 10004)
};
