#pragma once

#include "core/vocabulary/nxEnum.h"

/// How prices that are implied by other markets are made.
class NX_CORE_API nxImpliedPricingMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxImpliedPricingMethodEnum, 7800, 7807)
};
