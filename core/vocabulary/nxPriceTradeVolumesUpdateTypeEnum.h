#pragma once

#include "core/vocabulary/nxEnum.h"

/// Price trade volumes update type.
class NX_CORE_API nxPriceTradeVolumesUpdateTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxPriceTradeVolumesUpdateTypeEnum, 6100, 6103)
};
