#pragma once

#include "core/vocabulary/nxEnum.h"

/// Supplemental price type.
class NX_CORE_API nxSupplementalPriceTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSupplementalPriceTypeEnum, 11200, 11219)
};
