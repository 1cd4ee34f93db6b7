#pragma once

#include "core/vocabulary/nxEnum.h"

/// The type of value that a supplemental price carries.
class NX_CORE_API nxSupplementalPriceValueTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxSupplementalPriceValueTypeEnum, 12000, 12008)
};
