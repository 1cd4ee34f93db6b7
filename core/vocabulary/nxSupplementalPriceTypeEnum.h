#pragma once

#include "core/vocabulary/nxEnum.h"

/// The further figures that come with a price.
class NX_CORE_API nxSupplementalPriceTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSupplementalPriceTypeEnum, 11200, 11219)
};
