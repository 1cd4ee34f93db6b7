#pragma once

#include "core/vocabulary/nxEnum.h"

/// Price format.
class NX_CORE_API nxPriceFormatEnum : public nxEnum
{
    NX_ENUM_CLASS(nxPriceFormatEnum, 4500, 4529)
};
