#pragma once

#include "core/vocabulary/nxEnum.h"

/// How the money that one point of a price is worth is calculated.
class NX_CORE_API nxPointValueCalculationMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxPointValueCalculationMethodEnum, 12200, 12205)
};
