#pragma once

#include "core/vocabulary/nxEnum.h"

/// How much price information a screen shows where the mouse hovers.
class NX_CORE_API nxHoverPriceInfoTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxHoverPriceInfoTypeEnum, 8700, 8703)
    NX_ENUM_LESS(nxHoverPriceInfoTypeEnum)
};
