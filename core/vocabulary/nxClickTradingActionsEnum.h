#pragma once

#include "core/vocabulary/nxEnum.h"

/// Click trading actions.
class NX_CORE_API nxClickTradingActionsEnum : public nxEnum
{
    NX_ENUM_CLASS(nxClickTradingActionsEnum, 3000, 3039)
    NX_ENUM_LESS(nxClickTradingActionsEnum)
};
