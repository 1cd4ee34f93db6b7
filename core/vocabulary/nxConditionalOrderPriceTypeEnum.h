#pragma once

#include "core/vocabulary/nxEnum.h"

/// Conditional order price type.
class NX_CORE_API nxConditionalOrderPriceTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxConditionalOrderPriceTypeEnum, 6000, 6006)
};
