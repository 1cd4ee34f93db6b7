#pragma once

#include "core/vocabulary/nxEnum.h"

/// How an update of the volumes traded at each price is to be taken.
class NX_CORE_API nxPriceTradeVolumesUpdateTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxPriceTradeVolumesUpdateTypeEnum, 6100, 6103)
};
