#pragma once

#include "core/vocabulary/nxEnum.h"

/// Supplemental price value type.
class NX_CORE_API nxSupplementalPriceValueTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSupplementalPriceValueTypeEnum, 12000, 12008)
};
