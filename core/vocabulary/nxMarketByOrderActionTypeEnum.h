#pragma once

#include "core/vocabulary/nxEnum.h"

/// Market by order action type.
class NX_CORE_API nxMarketByOrderActionTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxMarketByOrderActionTypeEnum, 14300, 14307)
};
