#pragma once

#include "core/vocabulary/nxEnum.h"

/// Price type.
class NX_CORE_API nxPriceTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxPriceTypeEnum, 5800, 5827)
};
