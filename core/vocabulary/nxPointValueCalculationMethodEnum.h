#pragma once

#include "core/vocabulary/nxEnum.h"

/// Point value calculation method.
class NX_CORE_API nxPointValueCalculationMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxPointValueCalculationMethodEnum, 12200, 12205)
};
