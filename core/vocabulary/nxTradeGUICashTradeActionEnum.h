#pragma once

#include "core/vocabulary/nxEnum.h"

/// What a user does to a cash balance in the trade screen.
class NX_CORE_API nxTradeGUICashTradeActionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTradeGUICashTradeActionEnum, 5150, 5153)
};
