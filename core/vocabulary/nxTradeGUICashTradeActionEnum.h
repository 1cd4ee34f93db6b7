#pragma once

#include "core/vocabulary/nxEnum.h"

/// Trade GUI cash trade action.
class NX_CORE_API nxTradeGUICashTradeActionEnum : public nxEnum
{
    NX_ENUM_CLASS(nxTradeGUICashTradeActionEnum, 5150, 5153)
};
