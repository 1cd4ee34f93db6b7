#pragma once

#include "core/vocabulary/nxEnum.h"

/// Implied pricing method.
class NX_CORE_API nxImpliedPricingMethodEnum : public nxEnum
{
    NX_ENUM_CLASS(nxImpliedPricingMethodEnum, 7800, 7807)
};
