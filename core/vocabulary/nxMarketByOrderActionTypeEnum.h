#pragma once

#include "core/vocabulary/nxEnum.h"

/// What happens to one order in a book that shows every order.
class NX_CORE_API nxMarketByOrderActionTypeEnum : public nxEnum
{
    NX_ENUM_CLASS(nxMarketByOrderActionTypeEnum, 14300, 14307)
};
