#pragma once

#include "core/vocabulary/nxEnum.h"

/// The price that a conditional order watches.
class NX_CORE_API nxConditionalOrderPriceTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxConditionalOrderPriceTypeEnum, 6000, 6006)
};
