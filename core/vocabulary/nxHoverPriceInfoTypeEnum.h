#pragma once

#include "core/vocabulary/nxEnum.h"

/// Hover price info type.
class NX_CORE_API nxHoverPriceInfoTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxHoverPriceInfoTypeEnum, 8700, 8703)
    NX_ENUM_LESS(nxHoverPriceInfoTypeEnum)
};
